#include "reminders/ReminderDelivery.h"

#include "reminders/DeliveryWorld.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::hour;
using support::minute;
using support::numberedId;
using support::remindedTask;
using Bodies = std::vector<std::string>;

struct ReminderDeliveryTest : testing::Test, support::DeliveryWorld {
    const Instant nine = clock.now();

    void requestAt(std::uint32_t number, Instant dueDate) {
        request(remindedTask(number, dueDate, std::to_string(number)));
    }
    void remove(std::uint32_t number) { book->removePending(reminderIdentifier(numberedId(number))); }
    bool isDelivered(std::uint32_t number) const {
        const BookedReminder* booked = book->find(reminderIdentifier(numberedId(number)));
        return booked && booked->delivered;
    }
};

TEST_F(ReminderDeliveryTest, ShowsAReminderOnceWhenItsMinuteBegins) {
    start();
    EXPECT_EQ(timer.armed(), std::nullopt);
    request(remindedTask(1, nine + hour + 35.5, "Call mom"));
    EXPECT_EQ(timer.armed(), nine + hour);
    pass(hour - 0.001);
    EXPECT_TRUE(presenter.shown.empty());
    pass(0.001);
    ASSERT_EQ(presenter.shown.size(), 1U);
    EXPECT_EQ(presenter.shown[0].identifier, reminderIdentifier(numberedId(1)));
    EXPECT_EQ(presenter.shown[0].content,
              (NotificationContent{"Quillo", "Call mom", true, InterruptionLevel::timeSensitive}));
    EXPECT_TRUE(isDelivered(1));
    EXPECT_EQ(timer.armed(), std::nullopt);
    pass(100 * hour);
    stop();
    start();
    EXPECT_EQ(presenter.tried.size(), 1U);
}

TEST_F(ReminderDeliveryTest, WaitsForOneReminderAtATime) {
    start();
    requestAt(1, nine + 3 * hour);
    requestAt(2, nine + 1 * hour);
    requestAt(3, nine + 2 * hour);
    EXPECT_EQ(timer.armed(), nine + 1 * hour);
    remove(2);
    EXPECT_EQ(timer.armed(), nine + 2 * hour);
    const int armings = timer.armings;
    requestAt(4, nine + 4 * hour);
    remove(4);
    EXPECT_EQ(timer.armings, armings);
    pass(3 * hour);
    EXPECT_EQ(bodies(), (Bodies{"3", "1"}));
}

TEST_F(ReminderDeliveryTest, ManyInTimeGetANotificationEach) {
    start();
    Bodies expected;
    for (std::uint32_t number = 1; number <= 8; ++number) {
        requestAt(number, nine + hour + number);
        expected.push_back(std::to_string(number));
    }
    pass(hour);
    EXPECT_EQ(bodies(), expected);
}

TEST_F(ReminderDeliveryTest, ShowsNothingFromWithinACall) {
    start();
    clock.advance(58);
    requestAt(1, nine + 59);
    EXPECT_EQ(presenter.tried.size(), 0U);
    EXPECT_EQ(timer.armed(), nine);
    timer.look();
    EXPECT_EQ(bodies(), Bodies{"1"});
}

TEST_F(ReminderDeliveryTest, NeverShowsWhatWasRemovedBefore) {
    requestAt(1, nine + hour);
    requestAt(2, nine + hour);
    requestAt(3, nine + 2 * hour);
    remove(1);
    start();
    pass(90 * minute);
    remove(3);
    pass(10 * hour);
    EXPECT_EQ(bodies(), Bodies{"2"});
}

// What came due while nothing ran.

struct CatchUp {
    std::uint32_t missed;
    Bodies shown;
};

struct CatchUpTest : ReminderDeliveryTest, testing::WithParamInterface<CatchUp> {};

TEST_P(CatchUpTest, ShowsWhatCameDueWhileNothingRan) {
    for (std::uint32_t number = 1; number <= GetParam().missed; ++number)
        requestAt(number, nine + number * minute);
    requestAt(99, nine + 5 * hour);
    stop();
    clock.set(nine + 4 * hour);
    start();
    EXPECT_EQ(bodies(), GetParam().shown);
    for (std::uint32_t number = 1; number <= GetParam().missed; ++number)
        EXPECT_TRUE(isDelivered(number)) << number;
    EXPECT_EQ(timer.armed(), nine + 5 * hour);
    stop();
    start();
    EXPECT_EQ(bodies(), GetParam().shown) << "shown again at the next start";
}

INSTANTIATE_TEST_SUITE_P(Counts, CatchUpTest,
                         testing::Values(CatchUp{0, {}}, CatchUp{1, {"1"}},
                                         CatchUp{5, {"1", "2", "3", "4", "5"}},
                                         CatchUp{6, {"2", "3", "4", "5", "6", "1 more"}},
                                         CatchUp{20, {"16", "17", "18", "19", "20", "15 more"}}),
                         [](const auto& test) { return std::to_string(test.param.missed); });

TEST_F(ReminderDeliveryTest, TheSharedNotificationIsAReminderToo) {
    for (std::uint32_t number = 1; number <= 7; ++number)
        requestAt(number, nine + -hour);
    start();
    EXPECT_EQ(presenter.shown.back().identifier, "quillo.more");
    EXPECT_EQ(presenter.shown.back().content,
              (NotificationContent{"Quillo", "2 more", true, InterruptionLevel::timeSensitive}));
}

TEST_F(ReminderDeliveryTest, OnlyWhatIsLateIsShared) {
    for (std::uint32_t number = 1; number <= 4; ++number)
        requestAt(number, nine + -hour);
    for (std::uint32_t number = 5; number <= 9; ++number)
        requestAt(number, nine);
    clock.advance(59.9);
    start();
    EXPECT_EQ(presenter.shown.size(), 9U);
    stop();
    for (std::uint32_t number = 11; number <= 16; ++number) {
        book.emplace(preferences);
        requestAt(number, nine);
    }
    clock.advance(0.1);
    start();
    EXPECT_EQ(presenter.shown.size(), 9U + 6U);
    EXPECT_EQ(bodies().back(), "1 more");
}

TEST_F(ReminderDeliveryTest, SpeaksTheLanguageItIsTold) {
    for (std::uint32_t number = 1; number <= 8; ++number)
        requestAt(number, nine + -hour);
    delivery.emplace(
        ReminderDeliveryDependencies{*book, clock, calendar, timer, presenter, [](std::size_t count) {
                                         return "noch " + std::to_string(count) + " Erinnerungen";
                                     }});
    timer.look();
    EXPECT_EQ(bodies().back(), "noch 3 Erinnerungen");
}

// A desktop that is away or slow.

TEST_F(ReminderDeliveryTest, KeepsWhatTheDesktopDidNotTake) {
    presenter.available = false;
    requestAt(1, nine);
    start();
    EXPECT_EQ(presenter.tried.size(), 1U);
    EXPECT_FALSE(isDelivered(1));
    EXPECT_EQ(timer.armed(), std::nullopt) << "no polling";
    pass(hour);
    EXPECT_EQ(presenter.tried.size(), 1U);

    presenter.available = true;
    presenter.becameAvailable.emit();
    timer.look();
    EXPECT_EQ(bodies(), Bodies{"1"});
    presenter.becameAvailable.emit();
    timer.look();
    EXPECT_EQ(presenter.tried.size(), 2U);
}

TEST_F(ReminderDeliveryTest, TriesWhatFailedAgainWithTheNextReminder) {
    presenter.available = false;
    requestAt(1, nine);
    requestAt(2, nine + hour);
    start();
    EXPECT_EQ(timer.armed(), nine + hour);
    presenter.available = true;
    pass(hour);
    EXPECT_EQ(bodies(), (Bodies{"1", "2"}));
}

TEST_F(ReminderDeliveryTest, WhatFailedTogetherComesAgainTogether) {
    presenter.available = false;
    for (std::uint32_t number = 1; number <= 20; ++number)
        requestAt(number, nine + -hour);
    start();
    EXPECT_EQ(presenter.tried.size(), 6U);
    remove(20);
    presenter.available = true;
    presenter.becameAvailable.emit();
    timer.look();
    EXPECT_EQ(presenter.shown.size(), 6U);
    EXPECT_EQ(bodies().back(), "14 more");
}

TEST_F(ReminderDeliveryTest, RemovedAfterAFailureIsNotShown) {
    presenter.available = false;
    requestAt(1, nine);
    start();
    remove(1);
    presenter.available = true;
    presenter.becameAvailable.emit();
    timer.look();
    EXPECT_TRUE(presenter.shown.empty());
}

TEST_F(ReminderDeliveryTest, ShowsNothingTwiceWhileTheAnswerIsOut) {
    presenter.holding = true;
    requestAt(1, nine);
    requestAt(2, nine + hour);
    start();
    EXPECT_FALSE(isDelivered(1));
    setClock(nine + minute);
    presenter.becameAvailable.emit();
    delivery->calendarChanged();
    timer.look();
    EXPECT_EQ(presenter.tried.size(), 1U);
    EXPECT_EQ(timer.armed(), nine + hour);
    presenter.answerAll();
    EXPECT_TRUE(isDelivered(1));
}

TEST_F(ReminderDeliveryTest, RemovedWhileOnItsWayIsGone) {
    for (const bool available : {true, false}) {
        presenter.available = available;
        presenter.holding = true;
        requestAt(1, nine);
        start();
        remove(1);
        presenter.answerAll();
        EXPECT_TRUE(book->reminders().empty());
        presenter.holding = false;
        presenter.available = true;
        presenter.becameAvailable.emit();
        timer.look();
        EXPECT_EQ(presenter.waiting(), 0U);
        EXPECT_EQ(bodies(), Bodies{"1"});
    }
}

TEST_F(ReminderDeliveryTest, BookedAnewWhileOnItsWayIsShownInItsTime) {
    presenter.holding = true;
    requestAt(1, nine);
    start();
    requestAt(1, nine + hour);
    EXPECT_EQ(timer.armed(), std::nullopt) << "until it is known what became of the first";
    presenter.holding = false;
    presenter.answerAll();
    EXPECT_FALSE(isDelivered(1));
    EXPECT_EQ(timer.armed(), nine + hour);
    pass(hour);
    EXPECT_EQ(bodies(), (Bodies{"1", "1"}));
    EXPECT_TRUE(isDelivered(1));
}

TEST_F(ReminderDeliveryTest, BookedAnewWhileTheFirstFailsIsShownInItsTime) {
    presenter.holding = true;
    presenter.available = false;
    requestAt(1, nine);
    start();
    requestAt(1, nine + hour);
    presenter.holding = false;
    presenter.answerAll();
    presenter.available = true;
    EXPECT_EQ(timer.armed(), nine + hour);
    pass(hour);
    EXPECT_EQ(bodies(), Bodies{"1"});
}

TEST_F(ReminderDeliveryTest, ANewTitleWhileOnItsWayIsNoNewReminder) {
    presenter.holding = true;
    request(remindedTask(1, nine, "Call mom"));
    start();
    BookedReminders renamed = book->reminders();
    renamed.begin()->second.request.content.body = "Call dad";
    book->replaceAll(renamed);
    presenter.answerAll();
    EXPECT_TRUE(isDelivered(1));
    EXPECT_EQ(timer.armed(), std::nullopt);
}

TEST_F(ReminderDeliveryTest, KilledOnTheWayIsShownAgain) {
    presenter.holding = true;
    requestAt(1, nine);
    start();
    stop();
    EXPECT_EQ(timer.armed(), std::nullopt);
    presenter.available = false;
    presenter.answerAll(); // Nobody is there to hear it.
    presenter.available = true;
    presenter.holding = false;
    start();
    EXPECT_EQ(bodies(), Bodies{"1"});
}

// The clock, the zone.

TEST_F(ReminderDeliveryTest, FollowsAClockThatIsSetForward) {
    start();
    requestAt(1, nine + hour);
    requestAt(2, nine + 5 * hour);
    setClock(nine + 2 * hour);
    EXPECT_EQ(bodies(), Bodies{"1"});
    EXPECT_EQ(timer.armed(), nine + 5 * hour);
}

TEST_F(ReminderDeliveryTest, FollowsAClockThatIsSetBack) {
    start();
    requestAt(1, nine + hour);
    requestAt(2, nine + 2 * hour);
    pass(hour);
    setClock(nine);
    EXPECT_EQ(timer.armed(), nine + 2 * hour);
    pass(hour);
    EXPECT_EQ(bodies(), Bodies{"1"}) << "once, whatever the clock says";
    pass(hour);
    EXPECT_EQ(bodies(), (Bodies{"1", "2"}));
}

TEST_F(ReminderDeliveryTest, WhatFailedWaitsForItsTimeWhenTheClockIsSetBack) {
    presenter.available = false;
    start();
    requestAt(1, nine + hour);
    requestAt(2, nine + 9 * hour);
    pass(hour);
    presenter.available = true;
    setClock(nine);
    EXPECT_TRUE(presenter.shown.empty());
    EXPECT_EQ(timer.armed(), nine + hour);
    pass(hour);
    EXPECT_EQ(bodies(), Bodies{"1"});
}

TEST_F(ReminderDeliveryTest, AMinuteIsAMinuteWhereTheUserIs) {
    start();
    const Instant noon = calendar.instant({2025, 3, 5}, {12, 0});
    requestAt(1, noon);
    moveTo("America/New_York");
    EXPECT_EQ(timer.armed(), noon + 6 * hour);
    moveTo("Asia/Tokyo"); // where it is 17:00 already
    EXPECT_EQ(bodies(), Bodies{"1"});
    moveTo("Europe/Berlin");
    pass(24 * hour);
    EXPECT_EQ(bodies(), Bodies{"1"});
}

TEST_F(ReminderDeliveryTest, TimesThatAClockChangeSkipsOrRepeatsAreTheCalendars) {
    // Made in Tokyo for minutes that Berlin's clock skips and shows twice.
    calendar = support::calendarIn("Asia/Tokyo");
    requestAt(1, calendar.instant({2025, 3, 30}, {2, 30}));
    requestAt(2, calendar.instant({2025, 10, 26}, {2, 30}));
    calendar = support::calendarIn("Europe/Berlin");
    start();
    EXPECT_EQ(timer.armed(), calendar.instant({2025, 3, 30}, {3, 30}));
    pass(*timer.armed() - nine);
    EXPECT_EQ(bodies(), Bodies{"1"});
    EXPECT_EQ(timer.armed(), Instant::fromUnixSeconds(1761442200)); // the second of the two
}

TEST_F(ReminderDeliveryTest, LooksAgainWhereTheTimerFiresEarly) {
    start();
    requestAt(1, nine + hour);
    timer.disarm();
    timer.fired.emit();
    EXPECT_TRUE(presenter.shown.empty());
    EXPECT_EQ(timer.armed(), nine + hour);
}

} // namespace
} // namespace quillo

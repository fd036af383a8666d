#include "reminders/NotificationManager.h"

#include "reminders/Place.h"
#include "support/FixedClock.h"
#include "support/RecordingReminderCenter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::numberedId;
using support::Task;
using Identifier = std::optional<std::string>;

/// In Berlin on Wednesday, 5 March 2025, at 10:15:58.
struct NotificationManagerTest : testing::Test {
    unicode::CivilCalendar calendar = support::calendarIn("Europe/Berlin");
    support::FixedClock clock{calendar.instant({2025, 3, 5}, {10, 15}) + 58};
    support::RecordingReminderCenter center;
    std::optional<NotificationManager> manager{std::in_place, center, clock, calendar};

    std::vector<Identifier> answers;

    void schedule(const TodoItem& task) {
        manager->schedule(task, [this](Identifier identifier) { answers.push_back(std::move(identifier)); });
    }
    TodoItem taskDueIn(double seconds) const {
        return Task("Call mom").id(numberedId(0xAB)).due(clock.now() + seconds);
    }
};

const std::string identifierOfTask = "quillo.00000000-0000-0000-0000-0000000000AB";

TEST_F(NotificationManagerTest, AsksForTheMinuteOfTheDueDate) {
    const TodoItem task =
        Task("Call mom").id(numberedId(0xAB)).due(calendar.instant({2025, 12, 31}, {23, 59}) + 59.5);
    schedule(task);
    EXPECT_EQ(answers, (std::vector<Identifier>{identifierOfTask}));
    ASSERT_EQ(center.pending.size(), 1U);
    const ReminderRequest& request = center.pending.begin()->second;
    EXPECT_EQ(request.identifier, identifierOfTask);
    EXPECT_EQ(request.content.title, "Quillo");
    EXPECT_EQ(request.content.body, "Call mom");
    EXPECT_TRUE(request.content.sound);
    EXPECT_EQ(static_cast<int>(request.content.interruptionLevel), 2);
    EXPECT_EQ(request.at, (CalendarMinute{2025, 12, 31, 23, 59}));
    EXPECT_EQ(request.dueDate, task.dueDate);
}

TEST_F(NotificationManagerTest, AnInstantWithinThisMinuteIsScheduledForItsStart) {
    schedule(taskDueIn(1));
    ASSERT_EQ(answers, (std::vector<Identifier>{identifierOfTask}));
    EXPECT_EQ(center.pending.at(identifierOfTask).at, (CalendarMinute{2025, 3, 5, 10, 15}));
}

TEST_F(NotificationManagerTest, OnlyWhatIsStrictlyToComeIsScheduled) {
    const Instant now = clock.now();
    for (const Instant due : {now, now + -1, now + -1e9, Instant{std::nextafter(now.secondsSince2001, -1)}})
        schedule(Task("x").due(due));
    EXPECT_EQ(answers, std::vector<Identifier>(4));
    EXPECT_EQ(center.statusQueries, 0);
    schedule(Task("x").due({std::nextafter(now.secondsSince2001, 1e12)}));
    EXPECT_TRUE(answers.back());
}

TEST_F(NotificationManagerTest, ATaskWithoutDueDateNeverAsksForPermission) {
    center.status = ReminderAuthorization::notDetermined;
    schedule(Task("x"));
    EXPECT_EQ(answers, std::vector<Identifier>{std::nullopt});
    EXPECT_EQ(center.statusQueries, 0);
    EXPECT_TRUE(center.requestedOptions.empty());
}

TEST_F(NotificationManagerTest, SchedulingTwiceGivesTheSameIdentifierAndReplaces) {
    schedule(taskDueIn(3600));
    schedule(taskDueIn(7200));
    EXPECT_EQ(answers, (std::vector<Identifier>{identifierOfTask, identifierOfTask}));
    ASSERT_EQ(center.pending.size(), 1U);
    EXPECT_EQ(center.pending.at(identifierOfTask).at.hour, 12);
}

TEST_F(NotificationManagerTest, PermissionsThatWereGivenAreNotAskedForAgain) {
    for (const auto status : {ReminderAuthorization::authorized, ReminderAuthorization::provisional,
                              ReminderAuthorization::ephemeral}) {
        center.status = status;
        schedule(taskDueIn(3600));
        EXPECT_TRUE(answers.back());
    }
    EXPECT_TRUE(center.requestedOptions.empty());
}

TEST_F(NotificationManagerTest, ADenialIsFinal) {
    center.status = ReminderAuthorization::denied;
    schedule(taskDueIn(3600));
    EXPECT_EQ(answers, std::vector<Identifier>{std::nullopt});
    EXPECT_TRUE(center.requestedOptions.empty());
    EXPECT_TRUE(center.pending.empty());
}

TEST_F(NotificationManagerTest, AsksForAlertSoundAndBadgeWhereNothingIsDetermined) {
    center.status = ReminderAuthorization::notDetermined;
    schedule(taskDueIn(3600));
    EXPECT_EQ(center.requestedOptions, std::vector<unsigned>{7});
    EXPECT_TRUE(answers.back());

    center.userAnswer = false;
    schedule(taskDueIn(3600));
    EXPECT_FALSE(answers.back());

    center.userAnswer = Error{"nobody there to ask"};
    schedule(taskDueIn(3600));
    EXPECT_FALSE(answers.back());
    EXPECT_EQ(center.requestedOptions.size(), 3U); // as often as the status is still undetermined
}

TEST_F(NotificationManagerTest, AFailedAddIsNoReminder) {
    center.addOutcome = Error{"full"};
    schedule(taskDueIn(3600));
    EXPECT_EQ(answers, std::vector<Identifier>{std::nullopt});
}

TEST_F(NotificationManagerTest, ADateThatNoCalendarHasIsNoReminder) {
    for (const double due :
         {1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN(),
          unicode::CivilCalendar::latest.secondsSince2001})
        schedule(Task("x").due({due}));
    EXPECT_EQ(answers, std::vector<Identifier>(4));
    EXPECT_TRUE(center.pending.empty());
}

TEST_F(NotificationManagerTest, AnswersOnceWhenAllStepsAreDone) {
    center.status = ReminderAuthorization::notDetermined;
    center.hold();
    schedule(taskDueIn(3600));
    for (int steps = 0; steps < 3; ++steps) { // status, permission, adding
        EXPECT_TRUE(answers.empty());
        ASSERT_TRUE(center.step());
    }
    EXPECT_EQ(answers, (std::vector<Identifier>{identifierOfTask}));
    EXPECT_FALSE(center.step());
}

TEST_F(NotificationManagerTest, NothingIsCalledOnceItIsGone) {
    for (int stepsBefore = 0; stepsBefore < 3; ++stepsBefore) {
        support::RecordingReminderCenter slow;
        slow.status = ReminderAuthorization::notDetermined;
        slow.hold();
        bool called = false;
        auto brief = std::make_unique<NotificationManager>(slow, clock, calendar);
        brief->schedule(taskDueIn(3600), [&called](const Identifier&) { called = true; });
        for (int step = 0; step < stepsBefore; ++step)
            ASSERT_TRUE(slow.step());
        brief.reset();
        EXPECT_TRUE(slow.step());
        EXPECT_FALSE(slow.step()) << stepsBefore;
        EXPECT_FALSE(called);
    }
}

TEST_F(NotificationManagerTest, SkippedAndRepeatedTimesAreTheCalendars) {
    // The clock goes from 2:00 to 3:00 on 30 March, and back to 2:00 on 26 October.
    schedule(Task("a").id(numberedId(1)).due(calendar.instant({2025, 3, 30}, {2, 30})));
    EXPECT_EQ(center.pending.at(reminderIdentifier(numberedId(1))).at, (CalendarMinute{2025, 3, 30, 3, 30}));
    const Instant second = calendar.instant({2025, 10, 26}, {2, 30});
    schedule(Task("b").id(numberedId(2)).due(second));
    schedule(Task("c").id(numberedId(3)).due(second + -3600));
    for (const std::uint32_t task : {2U, 3U}) {
        const CalendarMinute at = center.pending.at(reminderIdentifier(numberedId(task))).at;
        EXPECT_EQ(at, (CalendarMinute{2025, 10, 26, 2, 30}));
        EXPECT_EQ(startOf(at, calendar), second);
    }
}

} // namespace
} // namespace quillo

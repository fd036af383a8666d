#include "reminders/AlignReminders.h"

#include "reminders/Place.h"
#include "support/InMemoryKeyValueStore.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

using support::hour;
using support::numberedId;
using support::remindedTask;
using support::Task;

/// In Berlin on Wednesday, 5 March 2025, at 9:00:30.
struct AlignRemindersTest : testing::Test {
    unicode::CivilCalendar calendar = support::calendarIn("Europe/Berlin");
    Instant now = calendar.instant({2025, 3, 5}, {9, 0}) + 30;
    support::InMemoryPreferences preferences;
    ReminderBook book{preferences};

    void align(const std::vector<TodoItem>& list) {
        alignReminders(book, remindedTasks(list), calendar, now);
    }
    /// What scheduling the task has left in the book.
    void bookFor(const TodoItem& task) {
        book.add(*reminderFor(task, calendar), [](const Outcome& added) { EXPECT_TRUE(added); });
    }
    const BookedReminder* booked(std::uint32_t number) const {
        return book.find(reminderIdentifier(numberedId(number)));
    }
};

TEST_F(AlignRemindersTest, LeavesABookThatIsInLine) {
    const std::vector<TodoItem> list = {remindedTask(1, now + hour), remindedTask(2, now + 1), Task("c"),
                                        Task("d").due(now + hour), remindedTask(3, now + -hour)};
    bookFor(list[0]);
    bookFor(list[1]);
    bookFor(list[4]);
    const BookedReminders before = book.reminders();
    const int writes = preferences.writes();
    align(list);
    EXPECT_EQ(book.reminders(), before);
    EXPECT_EQ(preferences.writes(), writes);
}

TEST_F(AlignRemindersTest, RemovesWhatBelongsToNoTask) {
    TodoItem done = remindedTask(2, now + hour);
    done.isDone = true;
    TodoItem dateless = remindedTask(3, now + hour);
    TodoItem silent = remindedTask(4, now + hour);
    TodoItem foreign = remindedTask(5, now + hour);
    for (const TodoItem& task : {remindedTask(1, now + hour), done, dateless, silent, foreign})
        bookFor(task);
    dateless.dueDate.reset();
    silent.notificationID.reset();
    foreign.notificationID = reminderIdentifier(numberedId(6));
    align({done, dateless, silent, foreign});
    EXPECT_TRUE(book.reminders().empty());
}

TEST_F(AlignRemindersTest, MakesWhatIsMissingAndToCome) {
    const std::vector<TodoItem> list = {remindedTask(1, now + hour), remindedTask(2, now + 0.5),
                                        remindedTask(3, now), remindedTask(4, now + -hour),
                                        Task("e").due(now + hour)};
    align(list);
    EXPECT_EQ(book.reminders().size(), 2U);
    ASSERT_TRUE(booked(1));
    EXPECT_EQ(booked(1)->request, *reminderFor(list[0], calendar));
    ASSERT_TRUE(booked(2));
    EXPECT_EQ(preferences.writes(), 1);
}

TEST_F(AlignRemindersTest, MakesRemindersForOtherDatesAnew) {
    for (const std::uint32_t number : {1U, 2U, 3U, 4U})
        bookFor(remindedTask(number, now + (number < 3 ? 1 : -1) * hour));
    const TodoItem later = remindedTask(1, now + 5 * hour);
    const TodoItem madeUp = remindedTask(3, now + 6 * hour);
    align({later, remindedTask(2, now + -2 * hour), madeUp, remindedTask(4, now + -3 * hour)});
    EXPECT_EQ(book.reminders().size(), 2U);
    EXPECT_EQ(booked(1)->request, *reminderFor(later, calendar));
    EXPECT_EQ(booked(3)->request, *reminderFor(madeUp, calendar));
}

TEST_F(AlignRemindersTest, KeepsWhatIsStillToBeMadeUpFor) {
    const TodoItem missed = remindedTask(1, now + -48 * hour);
    bookFor(missed);
    align({missed});
    ASSERT_TRUE(booked(1));
    EXPECT_FALSE(booked(1)->delivered);
}

TEST_F(AlignRemindersTest, NeverRepeatsWhatWasShown) {
    // Shown at 9:00:00 for 9:00:45; it is 9:00:30.
    const TodoItem task = remindedTask(1, now + 15);
    bookFor(task);
    book.markDelivered({booked(1)->request});
    for (const double later : {0.0, 20.0, -hour}) {
        now = now + later;
        align({task});
        ASSERT_TRUE(booked(1));
        EXPECT_TRUE(booked(1)->delivered);
    }
    align({});
    EXPECT_FALSE(booked(1));
}

TEST_F(AlignRemindersTest, AnotherDateAfterDeliveryIsRemindedOf) {
    bookFor(remindedTask(1, now + 15));
    book.markDelivered({booked(1)->request});
    align({remindedTask(1, now + hour)});
    ASSERT_TRUE(booked(1));
    EXPECT_FALSE(booked(1)->delivered);
    EXPECT_EQ(booked(1)->request.at.hour, 10);
}

TEST_F(AlignRemindersTest, SaysWhatTheTaskIsCalledNow) {
    bookFor(remindedTask(1, now + hour, "Call mom"));
    align({remindedTask(1, now + hour, "Call dad")});
    EXPECT_EQ(booked(1)->request.content.body, "Call dad");
    EXPECT_EQ(ReminderBook(preferences).reminders(), book.reminders());
}

TEST_F(AlignRemindersTest, KeepsTheMinuteInAnotherZone) {
    const TodoItem task = remindedTask(1, now + hour);
    bookFor(task);
    calendar = support::calendarIn("Asia/Tokyo");
    align({task});
    EXPECT_EQ(booked(1)->request.at, (CalendarMinute{2025, 3, 5, 10, 0}));
    align({task, remindedTask(2, now + hour)});
    EXPECT_EQ(booked(2)->request.at, (CalendarMinute{2025, 3, 5, 18, 0}));
}

TEST_F(AlignRemindersTest, MakesTheDayAnewWhereTheCalendarIsAnother) {
    const TodoItem toCome = remindedTask(1, now + hour);
    const TodoItem missed = remindedTask(2, now + -hour);
    calendar = support::calendarIn("Europe/Berlin", "fa_IR");
    bookFor(toCome);
    bookFor(missed);
    ASSERT_EQ(booked(1)->request.at.year, 1403);
    calendar = support::calendarIn("Europe/Berlin");
    align({toCome, missed});
    EXPECT_EQ(booked(1)->request.at, (CalendarMinute{2025, 3, 5, 10, 0}));
    EXPECT_EQ(booked(2)->request.at, (CalendarMinute{2025, 3, 5, 8, 0}));
}

TEST_F(AlignRemindersTest, OfEqualIdentifiersTheFirstTaskCounts) {
    align({remindedTask(1, now + hour), remindedTask(1, now + 2 * hour)});
    ASSERT_EQ(book.reminders().size(), 1U);
    EXPECT_EQ(booked(1)->request.dueDate, now + hour);
}

TEST_F(AlignRemindersTest, ADateThatNoCalendarHasGetsNone) {
    align({remindedTask(1, {1e300})});
    EXPECT_TRUE(book.reminders().empty());
}

} // namespace
} // namespace quillo

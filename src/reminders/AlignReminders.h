/// Brings the book of reminders in line with a list that it was not made with: at start (a crash may have
/// kept one and not the other), and after a list from another machine was accepted.
///
/// A task has a reminder if it is open, has a due date, and says so: its notificationID is the identifier
/// that we would give its reminder. Then:
/// - A reminder of no such task is removed: nobody would take it back when the task is completed.
/// - A reminder made for the due date that its task has now stays, shown or not, and also where the date has
///   passed and it was not shown yet: that is still to be made up for. It says what its task is called now.
///   It keeps its minute, also in another zone: nine o'clock is nine o'clock where the user is.
/// - A task whose due date is to come, without a reminder or with one for another date, gets one for that
///   date. A date that has passed gets none: whether it was reminded of elsewhere nobody knows.
/// - Where the user's calendar is another than when a reminder was made, its day means nothing any more; it
///   is made anew.
/// Nothing is ever changed in the list.
#pragma once

#include "model/TodoItem.h"
#include "reminders/ReminderBook.h"
#include "unicode/CivilCalendar.h"

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace quillo {

/// Tasks by the identifiers of their reminders.
using RemindedTasks = std::map<std::string, TodoItem>;

/// The identifier of the task's reminder, if it has one in the above sense.
std::optional<std::string> reminderOf(const TodoItem& task);

/// Of any range of tasks those that have a reminder; of two with the same id the first. Any thread.
template <class Items>
RemindedTasks remindedTasks(const Items& items) {
    RemindedTasks tasks;
    for (const TodoItem& item : items) {
        if (std::optional<std::string> identifier = reminderOf(item))
            tasks.emplace(*std::move(identifier), item);
    }
    return tasks;
}

/// See above. `tasks` are the list's remindedTasks. Writes the book at most once.
void alignReminders(ReminderBook& book, const RemindedTasks& tasks, const unicode::CivilCalendar& calendar,
                    Instant now);

} // namespace quillo

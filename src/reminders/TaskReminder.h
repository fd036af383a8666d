/// The reminder that belongs to a task.
#pragma once

#include "model/TodoItem.h"
#include "ports/ReminderCenter.h"
#include "unicode/CivilCalendar.h"

#include <optional>
#include <string>

namespace quillo {

/// Under which identifier the reminder of a task is pending: one reminder a task.
std::string reminderIdentifier(const Uuid& task);

/// The reminder that is due at the start of the minute of the task's due date. Absent where the task has none
/// or no calendar has a day for it.
std::optional<ReminderRequest> reminderFor(const TodoItem& task, const unicode::CivilCalendar& calendar);

/// When the clock shows that minute, in the calendar's zone as it is now.
Instant startOf(const CalendarMinute& minute, const unicode::CivilCalendar& calendar);

} // namespace quillo

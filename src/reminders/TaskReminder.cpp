#include "reminders/TaskReminder.h"

namespace quillo {

std::string reminderIdentifier(const Uuid& task) {
    return "quillo." + task.toString();
}

std::optional<ReminderRequest> reminderFor(const TodoItem& task, const unicode::CivilCalendar& calendar) {
    using unicode::CivilCalendar;
    if (!task.dueDate || !(*task.dueDate >= CivilCalendar::earliest && *task.dueDate < CivilCalendar::latest))
        return std::nullopt;
    const auto [date, time, weekday] = calendar.civilTime(*task.dueDate);
    return ReminderRequest{
        .identifier = reminderIdentifier(task.id),
        .content = {.title = "Quillo",
                    .body = task.title,
                    .sound = true,
                    .interruptionLevel = InterruptionLevel::timeSensitive},
        .at = {date.year, date.month, date.day, time.hour, time.minute},
        .dueDate = *task.dueDate,
    };
}

Instant startOf(const CalendarMinute& minute, const unicode::CivilCalendar& calendar) {
    return calendar.instant({minute.year, minute.month, minute.day}, {minute.hour, minute.minute});
}

} // namespace quillo

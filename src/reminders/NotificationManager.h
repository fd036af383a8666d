/// Turns due dates into reminders.
#pragma once

#include "base/CallbackScope.h"
#include "base/Clock.h"
#include "model/TodoItem.h"
#include "ports/ReminderCenter.h"
#include "unicode/CivilCalendar.h"

#include <functional>
#include <optional>
#include <string>

namespace quillo {

/// Asks for permission only when the first task with a coming due date needs it. Whatever goes wrong ends
/// silently, without a reminder. Taking reminders back is the business of whoever completes or removes tasks.
///
/// Belongs to the main thread.
class NotificationManager {
public:
    /// Told the identifier under which the reminder is pending, or that none is.
    using Scheduled = std::function<void(std::optional<std::string> identifier)>;

    /// All three must outlive it; the calendar says where the user lives now.
    NotificationManager(ReminderCenter& center, const Clock& clock, const unicode::CivilCalendar& calendar)
        : center_(center), clock_(clock), calendar_(calendar) {}

    /// Makes a reminder pending for the minute in which the task is due, in place of one that the task has.
    /// Calls `scheduled` once: at once if the center answers at once, and never after this is gone.
    void schedule(const TodoItem& task, Scheduled scheduled);

private:
    void ensureAuthorized(std::function<void(bool granted)> then);
    void add(const TodoItem& task, const Scheduled& scheduled);

    ReminderCenter& center_;
    const Clock& clock_;
    const unicode::CivilCalendar& calendar_;
    CallbackScope scope_;
};

} // namespace quillo

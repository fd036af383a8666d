/// Gives a task another due date, and the reminder that goes with it.
#pragma once

#include "base/CallbackScope.h"
#include "base/Instant.h"
#include "base/Uuid.h"
#include "ports/ReminderCenter.h"
#include "reminders/NotificationManager.h"
#include "store/TodoStore.h"

#include <optional>
#include <string>
#include <unordered_set>

namespace quillo {

/// Belongs to the main thread.
class SetReminder {
public:
    /// All three must outlive it; `center` is the one that `reminders` works with.
    SetReminder(TodoStore& store, ReminderCenter& center, NotificationManager& reminders)
        : store_(store), center_(center), reminders_(reminders) {}

    /// Removes the task's pending reminder, sets its due date (or clears it, and the notificationID with it)
    /// and, if there is a date and the task is open, schedules the new reminder. What comes of that is noted
    /// on the task when it is known, which may be after this has returned; nothing but the notificationID
    /// changes then. If by then the task is gone, done, or has no due date, its new reminder is removed; if
    /// it has another date, that one is scheduled in its place.
    void set(const Uuid& task, std::optional<Instant> dueDate);

private:
    std::optional<TodoItem> find(const Uuid& task) const;
    void schedule(const Uuid& task);
    void scheduled(const Uuid& task, Instant dueDate, std::optional<std::string> identifier);

    TodoStore& store_;
    ReminderCenter& center_;
    NotificationManager& reminders_;
    std::unordered_set<Uuid> waiting_; ///< tasks whose scheduling is not answered yet: one at a time for each
    CallbackScope scope_;
};

} // namespace quillo

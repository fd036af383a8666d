#include "entry/SetReminder.h"

#include <utility>

namespace quillo {

void SetReminder::set(const Uuid& task, std::optional<Instant> dueDate) {
    std::optional<TodoItem> item = find(task);
    if (!item)
        return;
    if (item->notificationID)
        center_.removePending(*item->notificationID);
    item->dueDate = dueDate;
    if (!dueDate || item->isDone)
        item->notificationID.reset();
    store_.update(*item);
    schedule(task);
}

std::optional<TodoItem> SetReminder::find(const Uuid& task) const {
    const auto index = store_.indexOf(task);
    return index ? std::optional(store_.items()[*index]) : std::nullopt;
}

/// Schedules what the task is due for now. While an earlier answer is still to come, that one will see to it.
void SetReminder::schedule(const Uuid& task) {
    const std::optional<TodoItem> item = find(task);
    if (!item || item->isDone || !item->dueDate || !waiting_.insert(task).second)
        return;
    reminders_.schedule(*item, scope_.guard([this, task, dueDate = *item->dueDate](auto identifier) {
        scheduled(task, dueDate, std::move(identifier));
    }));
}

void SetReminder::scheduled(const Uuid& task, Instant dueDate, std::optional<std::string> identifier) {
    waiting_.erase(task);
    std::optional<TodoItem> item = find(task);
    if (item && !item->isDone && item->dueDate == dueDate) {
        item->notificationID = std::move(identifier);
        store_.update(*std::move(item));
        return;
    }
    if (identifier)
        center_.removePending(*identifier);
    schedule(task);
}

} // namespace quillo

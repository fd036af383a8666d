#include "reminders/NotificationManager.h"

#include "reminders/TaskReminder.h"

#include <utility>

namespace quillo {

void NotificationManager::schedule(const TodoItem& task, Scheduled scheduled) {
    const bool isToCome = task.dueDate && *task.dueDate > clock_.now();
    if (!isToCome) {
        scheduled(std::nullopt);
        return;
    }
    ensureAuthorized([this, task, scheduled = std::move(scheduled)](bool granted) {
        if (granted)
            add(task, scheduled);
        else
            scheduled(std::nullopt);
    });
}

void NotificationManager::ensureAuthorized(std::function<void(bool granted)> then) {
    center_.authorizationStatus(
        scope_.guard([this, then = std::move(then)](ReminderAuthorization status) mutable {
            switch (status) {
            case ReminderAuthorization::authorized:
            case ReminderAuthorization::provisional:
            case ReminderAuthorization::ephemeral:
                then(true);
                return;
            case ReminderAuthorization::denied:
                then(false);
                return;
            case ReminderAuthorization::notDetermined:
                using namespace reminder_options;
                center_.requestAuthorization(
                    alert | sound | badge, scope_.guard([then = std::move(then)](const Result<bool>& given) {
                        then(given.ok() && *given);
                    }));
                return;
            }
        }));
}

void NotificationManager::add(const TodoItem& task, const Scheduled& scheduled) {
    std::optional<ReminderRequest> request = reminderFor(task, calendar_);
    if (!request) {
        scheduled(std::nullopt);
        return;
    }
    std::string identifier = request->identifier;
    center_.add(*std::move(request),
                scope_.guard([scheduled, identifier = std::move(identifier)](const Outcome& added) {
                    scheduled(added ? std::optional(identifier) : std::nullopt);
                }));
}

} // namespace quillo

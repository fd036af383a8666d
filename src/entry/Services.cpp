#include "entry/Services.h"

#include "base/Product.h"

#include <utility>

namespace quillo {

Services::Services(const Surroundings& surroundings)
    : with_(surroundings), reminderBook_(with_.preferences),
      notificationManager_(reminderBook_, with_.clock, with_.calendar),
      reviewPrompts_(with_.preferences, notifications_, product::version),
      todoStore_(TodoStoreDependencies{with_.preferences, with_.cloud, reminderBook_, with_.clock,
                                       notifications_, with_.mainExecutor, &with_.backups}),
      addTask_(with_.clock, todoStore_, notificationManager_),
      setReminder_(todoStore_, reminderBook_, notificationManager_),
      commands_(
          TaskCommandsDependencies{with_.clock, todoStore_, addTask_, setReminder_, with_.languageModel}) {
    todoStore_.addCompletionListener([this](const TodoItem& item, Instant completedAt) {
        statsStore().recordCompletion(item, completedAt);
    });
    todoStore_.addCompletionListener([this](const TodoItem&, Instant) { reviewPrompts_.noteCompletion(); });
}

StatsStore& Services::statsStore() {
    if (!statsStore_)
        statsStore_.emplace(StatsStoreDependencies{with_.preferences, with_.clock, with_.calendar,
                                                   notifications_,
                                                   [this](std::string_view key, std::string_view bytes) {
                                                       return with_.backups.keepDamaged(key, bytes);
                                                   }});
    return *statsStore_;
}

void Services::giveUpWaiting() {
    addTask_.addWaiting();
    commands_.giveUpWaiting();
}

Outcome Services::drain() {
    if (statsStore_)
        statsStore_->drain();
    return todoStore_.drain();
}

void Services::whenSaved(std::function<void(Outcome)> told) {
    // Statistics follow from what happened to the list: where one queue is through, the other was asked
    // before.
    const auto listSaved = [this, told = std::move(told)] { todoStore_.whenSaved(told); };
    if (statsStore_)
        statsStore_->whenSaved(listSaved);
    else
        listSaved();
}

} // namespace quillo

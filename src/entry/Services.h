/// Everything behind the list, put together: what the desktop program and a command that works by itself have
/// in common.
#pragma once

#include "base/Clock.h"
#include "base/Executor.h"
#include "base/NotificationCenter.h"
#include "base/Result.h"
#include "entry/AddTask.h"
#include "entry/SetReminder.h"
#include "entry/TaskCommands.h"
#include "ports/CloudStore.h"
#include "ports/LanguageModel.h"
#include "ports/Preferences.h"
#include "reminders/NotificationManager.h"
#include "reminders/ReminderBook.h"
#include "review/ReviewPromptService.h"
#include "stats/StatsStore.h"
#include "store/Backups.h"
#include "store/TodoStore.h"
#include "unicode/CivilCalendar.h"

#include <functional>
#include <optional>

namespace quillo {

/// What the services work with; all of it outlives them.
struct Surroundings {
    Preferences& preferences;
    CloudStore& cloud;
    const Clock& clock;
    const unicode::CivilCalendar& calendar; ///< where the user lives; its owner may assign it another zone
    Executor& mainExecutor;
    Backups& backups;
    LanguageModel* languageModel = nullptr; ///< asked about texts that the rules cannot date; may be none
};

/// One a process. Belongs to the main thread. Going, it waits until all that was changed has been handed to
/// the preferences.
class Services {
public:
    explicit Services(const Surroundings& surroundings);

    NotificationCenter& notifications() { return notifications_; }
    ReminderBook& reminderBook() { return reminderBook_; }
    TodoStore& todoStore() { return todoStore_; }
    AddTask& addTask() { return addTask_; }
    SetReminder& setReminder() { return setReminder_; }
    TaskCommands& commands() { return commands_; }
    ReviewPromptService& reviewPrompts() { return reviewPrompts_; }

    /// Made, and its statistics read, on first use.
    StatsStore& statsStore();

    /// Ends whatever waits for the language model, or for the permission to remind, as if there were neither:
    /// what was typed is on the list then, and who asked for it has been told.
    void giveUpWaiting();

    /// Returns when everything changed before the call has been handed to the preferences. An error if the
    /// list could not be.
    Outcome drain();

    /// Calls `told` once, on some thread, when everything changed before the call has been handed to the
    /// preferences: with an error if the list could not be.
    void whenSaved(std::function<void(Outcome)> told);

private:
    const Surroundings with_;
    // In the order in which they are made; each may use those above it.
    NotificationCenter notifications_;
    ReminderBook reminderBook_;
    NotificationManager notificationManager_;
    ReviewPromptService reviewPrompts_;
    TodoStore todoStore_;
    std::optional<StatsStore> statsStore_; ///< after the list, to which its queue hands on (whenSaved)
    AddTask addTask_;
    SetReminder setReminder_;
    TaskCommands commands_;
};

} // namespace quillo

/// What a command needs to work on the list by itself: the composition root of the command line.
#pragma once

#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/Result.h"
#include "entry/AddTask.h"
#include "entry/TaskCommands.h"
#include "parser/ParserService.h"
#include "sqlite/PreferencesLock.h"
#include "sqlite/SqlitePreferences.h"
#include "store/Backups.h"
#include "store/TodoStore.h"
#include "sync/UnsetCloudStore.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace quillo::cli {

class Session {
public:
    /// Commands that only look need no lock: they see what was committed last, whoever writes meanwhile.
    enum class Purpose { Look, Change };

    /// Takes the lock where the list is to be changed (waiting at most two seconds for whoever holds it) and
    /// loads the list of the user's data folder.
    static Result<std::unique_ptr<Session>> open(Purpose purpose);

    TodoStore& store() { return store_; }
    TaskCommands& commands() { return commands_; }
    const unicode::DateFormat& dates() const { return dates_; }

    /// Waits until everything that was changed is on disk.
    Outcome commit();

private:
    /// Reminders come with the resident program.
    class NoReminders : public ReminderCenter {
    public:
        void removePending(const std::string&) override {}
    };

    Session(std::filesystem::path folder, std::optional<PreferencesLock> lock,
            std::unique_ptr<SqlitePreferences> preferences, unicode::CivilCalendar calendar);

    // In the order in which they are made; each may use those above it.
    std::optional<PreferencesLock> lock_;
    std::unique_ptr<SqlitePreferences> preferences_;
    SystemClock clock_;
    NoReminders reminders_;
    UnsetCloudStore cloud_;
    NotificationCenter notifications_;
    Backups backups_;
    unicode::CivilCalendar calendar_;
    unicode::DateFormat dates_;
    ParserService parser_;
    TodoStore store_;
    AddTask addTask_;
    TaskCommands commands_;
};

} // namespace quillo::cli

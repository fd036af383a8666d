/// What a command needs to work on the list by itself: the composition root of the command line.
#pragma once

#include "base/Clock.h"
#include "base/ManualExecutor.h"
#include "base/Result.h"
#include "control/Answer.h"
#include "control/Request.h"
#include "entry/Services.h"
#include "languagemodel/ChosenLanguageModel.h"
#include "sqlite/PreferencesLock.h"
#include "sqlite/SqlitePreferences.h"
#include "store/Backups.h"
#include "sync/UnsetCloudStore.h"
#include "unicode/CivilCalendar.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace quillo::cli {

class Session {
public:
    /// Loads the list of the user's data folder, for looking only. That needs no lock: what is seen is what
    /// was committed last, whoever writes meanwhile.
    static Result<std::unique_ptr<Session>> look();

    /// Loads a folder's list for changing it. A newer one in the cloud store comes before what is changed.
    static Result<std::unique_ptr<Session>> change(const std::filesystem::path& folder, PreferencesLock lock);

    const TaskList& items() { return services_.todoStore().items(); }
    bool listIsDamaged() { return services_.todoStore().beganDamaged(); }
    const Preferences& preferences() const { return *preferences_; }
    StatsStore& statsStore() { return services_.statsStore(); }

    /// Does what is asked, and answers when that is on disk. Waits, for a language model too.
    control::Answer answer(const control::Request& request);

private:
    static Result<std::unique_ptr<Session>> open(const std::filesystem::path& folder,
                                                 std::optional<PreferencesLock> lock);

    Session(const std::filesystem::path& folder, std::optional<PreferencesLock> lock,
            std::unique_ptr<SqlitePreferences> preferences, unicode::CivilCalendar calendar);

    Outcome commit();

    // In the order in which they are made; each may use those above it.
    std::optional<PreferencesLock> lock_;
    std::unique_ptr<SqlitePreferences> preferences_;
    SystemClock clock_;
    UnsetCloudStore cloud_;
    ManualExecutor mainExecutor_;
    ChosenLanguageModel languageModel_;
    Backups backups_;
    unicode::CivilCalendar calendar_;
    Services services_;
};

} // namespace quillo::cli

/// What a command needs to work on the list by itself: the composition root of the command line.
#pragma once

#include "base/Clock.h"
#include "base/ManualExecutor.h"
#include "base/Result.h"
#include "control/Answer.h"
#include "control/Request.h"
#include "entry/Services.h"
#include "entry/SyncCommands.h"
#include "sqlite/PreferencesLock.h"
#include "sqlite/SqlitePreferences.h"
#include "store/Backups.h"
#include "sync/KeptPasswords.h"
#include "sync/SyncedCloudStore.h"
#include "unicode/CivilCalendar.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

namespace quillo::cli {

class Session {
public:
    /// Loads the list of the user's data folder, for looking only. That needs no lock: what is seen is what
    /// was committed last, whoever writes meanwhile. Where it is kept in step with other computers and nobody
    /// else holds it, theirs is taken over first, if it is newer.
    static Result<std::unique_ptr<Session>> look();

    /// Loads a folder's list for changing it. A newer one in the cloud store comes before what is changed.
    static Result<std::unique_ptr<Session>> change(const std::filesystem::path& folder, PreferencesLock lock);

    const TaskList& items() { return services_.todoStore().items(); }
    bool listIsDamaged() { return services_.todoStore().beganDamaged(); }
    const Preferences& preferences() const { return *preferences_; }
    StatsStore& statsStore() { return services_.statsStore(); }

    /// The task of that name, as commands name tasks, or why there is none.
    Result<control::NumberedItem> find(std::string_view task) { return services_.commands().find(task); }

    /// Does what is asked, and answers when that is on disk. `text` is what the request's text was understood
    /// as, if it has one: no language model is asked here, as others wait for the lock. What is to go to
    /// other computers is on its way then; the end of the session gives it a moment.
    control::Answer answer(const control::Request& request, const std::optional<UnderstoodText>& text);

private:
    static Result<std::unique_ptr<Session>> open(const std::filesystem::path& folder,
                                                 std::optional<PreferencesLock> lock);

    Session(const std::filesystem::path& folder, std::optional<PreferencesLock> lock,
            std::unique_ptr<SqlitePreferences> preferences, unicode::CivilCalendar calendar);

    CloudStore& cloudWithNews();
    Outcome reachPlace();
    Outcome takeNews();
    void apply(const control::Request& request, const std::optional<UnderstoodText>& text,
               const SyncCommands::Reply& reply);
    Outcome commit();

    // In the order in which they are made; each may use those above it.
    std::optional<PreferencesLock> lock_;
    std::unique_ptr<SqlitePreferences> preferences_;
    SystemClock clock_;
    ManualExecutor mainExecutor_;
    std::shared_ptr<KeptPasswords> passwords_;
    SyncedCloudStore cloud_;
    Backups backups_;
    unicode::CivilCalendar calendar_;
    Services services_;
    SyncCommands syncCommands_;
};

} // namespace quillo::cli

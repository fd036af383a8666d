/// The composition root of what works without a screen: the services and their surroundings.
#pragma once

#include "base/Clock.h"
#include "base/Result.h"
#include "base/SerialQueue.h"
#include "base/Signal.h"
#include "control/Request.h"
#include "entry/Place.h"
#include "entry/ReminderAlignment.h"
#include "entry/Services.h"
#include "entry/SyncCommands.h"
#include "languagemodel/ChosenLanguageModel.h"
#include "linux/ControlServer.h"
#include "linux/DesktopNotifications.h"
#include "linux/MainThreadExecutor.h"
#include "linux/TimeZoneWatch.h"
#include "linux/TimerfdTimer.h"
#include "ports/LanguageModel.h"
#include "reminders/ReminderDelivery.h"
#include "sqlite/PreferencesLock.h"
#include "sqlite/SqlitePreferences.h"
#include "store/Backups.h"
#include "sync/KeptPasswords.h"
#include "sync/KeyringLibrary.h"
#include "sync/SyncedCloudStore.h"
#include "unicode/CivilCalendar.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillo {

/// Owns the ports and the services that work over them. Belongs to the main thread. Going, it waits until all
/// that was changed is on disk.
class AppServices {
public:
    /// Loads what the folder holds and begins to remind and to answer commands.
    static Result<std::unique_ptr<AppServices>> open(const std::filesystem::path& folder,
                                                     PreferencesLock lock);

    /// A command asked the program to end.
    Signal<> quitRequested;

    /// The system's time zone is another; calendar() has followed.
    Signal<> zoneChanged;

    /// A command asks for a window; says whether it can be had. Without it there is no screen.
    void showWindows(std::function<Outcome(control::Show::Window)> show) { show_ = std::move(show); }

    Services& services() { return services_; }
    Preferences& preferences() { return *preferences_; }
    const Clock& clock() const { return clock_; }
    Executor& mainExecutor() { return mainExecutor_; }

    /// Where the user lives. Stays the same object when the system's time zone changes.
    const unicode::CivilCalendar& calendar() const { return calendar_; }

    /// Puts the task on the list that the text speaks of, as typed here and now; later, where a language
    /// model thinks about it.
    void addTask(const std::string& text);

    /// Has the language model get ready for the first text, if there is one. Does not wait.
    void prewarmLanguageModel();

    SyncedCloudStore& cloud() { return cloud_; }
    SyncCommands& syncCommands() { return syncCommands_; }

    /// Looks, in the background, for what other computers may have left where nobody tells of it.
    void lookForNews() { cloud_.synchronize(); }

    /// Whether the user has the list before his eyes: it is looked more often then, where nobody tells.
    void setListShown(bool shown) { cloud_.setShown(shown); }

    /// Takes no more commands, shows no more reminders, waits for no language model any more, and calls
    /// `done` when what had begun is done, or that takes too long.
    void stop(const std::function<void()>& done);

private:
    AppServices(const std::filesystem::path& folder, PreferencesLock lock,
                std::unique_ptr<SqlitePreferences> preferences, unicode::CivilCalendar calendar);

    void askForPassword();
    control::Answer show(const control::Show& what) const;
    control::Answer use(const control::UseModel& what);
    void serve(const control::Request& request, const ControlServer::Reply& reply);
    void replyOnceSaved(const control::Answer& answer, const ControlServer::Reply& reply);
    bool busy() const;
    void followTimeZone();

    // In the order in which they are made; each may use those above it.
    PreferencesLock lock_;
    std::unique_ptr<SqlitePreferences> preferences_;
    SystemClock clock_;
    MainThreadExecutor mainExecutor_;
    std::shared_ptr<KeptPasswords> passwords_ = std::make_shared<KeptPasswords>(loadKeyring);
    SyncedCloudStore cloud_;
    ChosenLanguageModel languageModel_;
    Backups backups_;
    unicode::CivilCalendar calendar_;
    SerialQueue commits_{"Quillo.Commits"};
    Services services_;
    SyncCommands syncCommands_;
    Places places_{&languageModel_};
    std::function<Outcome(control::Show::Window)> show_;
    TimerfdTimer timer_;
    DesktopNotifications desktopNotifications_;
    std::optional<ReminderDelivery> delivery_; ///< from when the book is in line with the list
    ReminderAlignment alignment_;
    TimeZoneWatch timeZoneWatch_;
    std::unique_ptr<ControlServer> server_;
    Connection aligned_;
    Connection zoneWatched_;
    bool askedForPassword_ = false;
    Connection exchanged_;
    std::vector<Connection> idle_;
    QTimer giveUp_;
};

} // namespace quillo

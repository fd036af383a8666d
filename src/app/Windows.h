/// What comes up from the status bar, as the shell sees it.
#pragma once

#include "base/Clock.h"
#include "base/Signal.h"
#include "entry/MenuActions.h"
#include "entry/Services.h"
#include "entry/SyncCommands.h"
#include "hotkey/HotKeyManager.h"
#include "ports/AppearanceSettings.h"
#include "ports/StatusItem.h"
#include "unicode/CivilCalendar.h"

#include <functional>
#include <optional>
#include <string>

namespace quillo {

/// The popover with the task list.
class PopoverPlace {
public:
    virtual ~PopoverPlace() = default;

    /// Shows it at the place that was clicked, or where the desktop puts such things; or closes it, where it
    /// is shown. The token may be empty.
    virtual void toggle(const std::optional<ScreenPoint>& anchor, const std::string& activationToken) = 0;

    /// Shows it, also where it is shown already.
    virtual void show(const std::optional<ScreenPoint>& anchor, const std::string& activationToken) = 0;
};

/// The quick-add panel.
class QuickAddPlace {
public:
    virtual ~QuickAddPlace() = default;

    virtual bool isVisible() const = 0;
    virtual void show(const std::string& activationToken) = 0;
    virtual void hide() = 0;
};

/// What the windows show and do; all of it outlives them.
struct WindowsDependencies {
    Services& services;
    Preferences& preferences;
    Executor& mainExecutor;
    const Clock& clock;
    const unicode::CivilCalendar& calendar;
    std::function<void(const std::string&)> addTask; ///< takes what was typed, trimmed; not blank
    std::function<void(bool)> listShown;             ///< hears whether the user has the list before his eyes
    Signal<>& zoneChanged;                           ///< the user's time zone is another one
    HotKeyManager& hotKeys;
    HotKeyCenter& hotKeyCenter;
    const AppearanceSettings& appearance;
    const MenuActions& actions;
    SyncedCloudStore& cloud;
    SyncCommands& syncCommands;
};

/// All windows of the program. Belongs to the main thread. They are in a library of their own,
/// `quillo-windows`, which is loaded when the first of them is wanted: what draws them is most of what the
/// program would otherwise load at its start.
class Windows {
public:
    virtual ~Windows() = default;

    virtual PopoverPlace& popover() = 0;
    virtual QuickAddPlace& quickAdd() = 0;

    /// Each opens a window, or brings the one that is open to the front. The token may be empty.
    virtual void openSettings(const std::string& activationToken) = 0;
    virtual void openStatistics(const std::string& activationToken) = 0;

    /// From now on it looks for newer releases by itself, where the user wants that.
    virtual void startUpdater() = 0;
    virtual void checkForUpdates() = 0;
};

/// What the library has to offer, under the name in `windowsMaker`.
using MakeWindows = Windows* (*)(const WindowsDependencies&);
inline constexpr const char* windowsMaker = "quilloMakeWindows";

} // namespace quillo

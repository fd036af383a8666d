/// The shell: what stands in the status bar, and what comes up from it.
#pragma once

#include "app/Windows.h"
#include "base/Result.h"
#include "base/Signal.h"
#include "control/Request.h"
#include "hotkey/HotKeyManager.h"
#include "ports/StatusItem.h"
#include "store/TodoStore.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quillo {

/// What the shell wires. The functions are called in the order in which the launch needs what they make; what
/// they return outlives the shell.
struct AppDelegateDependencies {
    StatusItem& statusItem;
    std::function<TodoStore&()> todoStore;
    std::function<PopoverPlace&()> popover;
    std::function<HotKeyManager&()> hotKeys;
    std::function<QuickAddPlace&()> quickAdd;
    std::function<void()> startUpdater;
    std::function<void()> prepareLanguageModel;
    const MenuActions& actions;
};

/// One a process. Belongs to the main thread.
class AppDelegate {
public:
    explicit AppDelegate(AppDelegateDependencies dependencies);

    /// The first half of the launch, which needs no list: the item stands in the status bar.
    void showStatusItem();

    /// The second half, once the list can be had. Neither asks for the permission to notify nor makes the
    /// statistics: both happen when they are first needed.
    void finishLaunching();

    /// Shows one of the windows; an error in words for the user where there is none.
    Outcome show(control::Show::Window window, const std::string& activationToken);

    /// The shortcut's action: it opens the panel and dismisses it.
    void toggleQuickAdd(const std::string& activationToken);

private:
    void handleClick(const StatusItemClick& click);
    void showStatusMenu(const std::optional<ScreenPoint>& place);
    void showExportMenu();
    void updateStatusTitle();
    std::vector<MenuItem> statusMenu();

    /// The same menu where a bar shows it in place of sending the click: then it is the only way to the list.
    std::vector<MenuItem> menuOfTheBar();

    const AppDelegateDependencies with_;
    bool launched_ = false;
    std::optional<StatusItemClick> earlyClick_; ///< one that asked for the popover before the list was there
    std::vector<Connection> connections_;
};

} // namespace quillo

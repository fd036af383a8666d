/// The composition root of what has a screen: what the shell wires, put together.
#pragma once

#include "app/AppDelegate.h"
#include "app/ExportTarget.h"
#include "app/WindowsLibrary.h"
#include "base/Signal.h"
#include "control/Request.h"
#include "entry/MenuActions.h"
#include "linux/appearance/DesktopAppearance.h"
#include "linux/desktopservices/DesktopSavePanel.h"
#include "linux/hotkey/DesktopHotKeyCenter.h"
#include "linux/statusitem/DesktopStatusItem.h"
#include "resident/Application.h"

#include <QTranslator>
#include <memory>
#include <optional>
#include <vector>

namespace quillo {

/// What has to be settled before there is a QApplication.
void prepareScreen();

/// Needs a QApplication. Belongs to the main thread; goes before the application it is given.
class Shell {
public:
    /// Shows nothing before the application is known to stay; then the status item, and with the list the
    /// rest. `wanted` is the window to begin with, if any.
    Shell(Application& application, std::optional<control::Show::Window> wanted);
    ~Shell();

private:
    void open(AppServices& services, std::optional<control::Show::Window> wanted);
    HotKeyManager& hotKeys();
    ExportTarget& exportTarget();
    Outcome show(control::Show::Window window, const std::string& activationToken);
    void startUpdater();
    void prepareLanguageModel();

    Application& application_;
    AppServices* services_ = nullptr; ///< from when the list is there

    // In the order in which they are made; each may use those above it.
    QTranslator translator_;
    DesktopAppearance appearance_;
    DesktopStatusItem statusItem_;
    MenuActions menuActions_; ///< of all menus
    std::unique_ptr<DesktopHotKeyCenter> hotKeyCenter_;
    std::unique_ptr<HotKeyManager> hotKeys_;
    DesktopSavePanel savePanel_;
    std::optional<ExportTarget> exportTarget_;
    WindowsLibrary library_;
    QObject later_; ///< what is put off to when the program runs ends with this
    std::unique_ptr<PopoverPlace> popover_;
    std::unique_ptr<QuickAddPlace> quickAdd_;
    std::optional<AppDelegate> delegate_;
    std::vector<Connection> connections_;
};

} // namespace quillo

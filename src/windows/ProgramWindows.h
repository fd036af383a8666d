/// The composition root of the windows.
#pragma once

#include "app/Windows.h"
#include "base/Signal.h"
#include "linux/TimerfdTimer.h"
#include "linux/desktopservices/DesktopFolderPanel.h"
#include "linux/desktopservices/DesktopUrlOpener.h"
#include "linux/updates/AppcastUpdater.h"
#include "ports/LoginItem.h"
#include "ui/feedback/Feedback.h"
#include "ui/popover/Popover.h"
#include "ui/popover/PopoverModel.h"
#include "ui/quickadd/QuickAddController.h"
#include "ui/settings/SettingsModel.h"
#include "ui/stats/StatsModel.h"
#include "ui/theme/Theme.h"
#include "ui/windows/KeptWindow.h"
#include "windows/UpdaterController.h"

#include <QQmlEngine>
#include <memory>
#include <vector>

namespace quillo {

class ProgramWindows final : public Windows {
public:
    explicit ProgramWindows(const WindowsDependencies& dependencies);
    ~ProgramWindows() override;

    PopoverPlace& popover() override;
    QuickAddPlace& quickAdd() override;
    void openSettings(const std::string& activationToken) override;
    void openStatistics(const std::string& activationToken) override;
    void startUpdater() override;
    void checkForUpdates() override;

private:
    UpdaterController& updater();
    std::unique_ptr<KeptWindow> window(const char* file, QObject* model);
    QQmlEngine& engine();

    const WindowsDependencies with_;

    // In the order in which they are made; each may use those above it.
    Theme theme_;
    DesktopUrlOpener urlOpener_;
    DesktopFolderPanel folderPanel_;
    Feedback feedback_{urlOpener_, productFeedbackAddresses()};
    std::unique_ptr<LoginItem> loginItem_;
    std::unique_ptr<AppcastUpdater> appcast_;
    std::unique_ptr<TimerfdTimer> updateTimer_;
    std::unique_ptr<UpdaterController> updater_;
    std::unique_ptr<PopoverModel> popoverModel_;
    std::unique_ptr<SettingsModel> settingsModel_;
    std::unique_ptr<StatsModel> statsModel_;
    std::unique_ptr<QQmlEngine> engine_;
    std::unique_ptr<PopoverPlace> popover_;
    std::unique_ptr<QuickAddPlace> quickAdd_;
    std::unique_ptr<KeptWindow> settings_;
    std::unique_ptr<KeptWindow> statistics_;
    std::unique_ptr<KeptWindow> updates_;
    std::vector<Connection> connections_;
};

} // namespace quillo

/// The status item on whatever bar the desktop has.
#pragma once

#include "linux/statusitem/DBusMenu.h"
#include "linux/statusitem/PopupMenu.h"
#include "linux/statusitem/StatusBarWatch.h"
#include "linux/statusitem/StatusItemContent.h"
#include "linux/statusitem/StatusNotifierItem.h"
#include "linux/statusitem/StatusPictures.h"
#include "linux/statusitem/TrayIconFallback.h"
#include "ports/StatusItem.h"

#include <QDBusConnection>
#include <QTimer>
#include <memory>
#include <string_view>
#include <vector>

namespace quillo {

/// A StatusNotifierItem on the session bus. On X11, while no panel takes those, an icon in the system tray.
/// Needs a QApplication.
class DesktopStatusItem final : public StatusItem {
public:
    explicit DesktopStatusItem(SymbolPicture draw);
    ~DesktopStatusItem() override;
    DesktopStatusItem(const DesktopStatusItem&) = delete;
    DesktopStatusItem& operator=(const DesktopStatusItem&) = delete;

    void setFace(const StatusItemFace& face) override;
    void setTitle(std::string_view title) override;
    void setMenu(MenuMaker maker) override;
    void showMenu(const std::vector<MenuItem>& menu, const std::optional<ScreenPoint>& place) override;

private:
    void announce();
    void show();
    void fallBack();

    const SymbolPicture draw_;
    StatusItemContent content_;
    bool announced_ = false;

    /// Its own, so that it leaves the panel with this object, not with the process.
    QDBusConnection bus_;
    DBusMenu menu_;
    StatusNotifierItem item_;
    StatusBarWatch watch_;
    QTimer patience_; ///< runs out when no panel came up
    std::unique_ptr<TrayIconFallback> fallback_;
    Connection fallbackClicks_;
    PopupMenu popup_;
    std::vector<Connection> connections_;
};

} // namespace quillo

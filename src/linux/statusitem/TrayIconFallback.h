/// The status item in X11's older system tray, for bars that know nothing else.
#pragma once

#include "base/Signal.h"
#include "linux/statusitem/StatusItemContent.h"
#include "linux/statusitem/StatusPictures.h"

#include <QObject>
#include <QSystemTrayIcon>

namespace quillo {

/// Appears as soon as there is a tray, and again in one that comes up later.
/// https://specifications.freedesktop.org/systemtray-spec/
class TrayIconFallback final : public QObject {
    Q_OBJECT

public:
    explicit TrayIconFallback(SymbolPicture draw);

    /// Whether there is a tray at the moment. Asks the X server.
    static bool hasTray();

    void show(const StatusItemContent& content);

    Signal<const StatusItemClick&> clicked;

private:
    void activated(QSystemTrayIcon::ActivationReason reason);

    StatusPictures pictures_;
    QSystemTrayIcon icon_;
};

} // namespace quillo

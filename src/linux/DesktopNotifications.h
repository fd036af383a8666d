/// Notifications through the desktop's notification daemon.
#pragma once

#include "base/Signal.h"
#include "ports/NotificationPresenter.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <deque>
#include <map>
#include <optional>
#include <string>

namespace quillo {

/// org.freedesktop.Notifications on the session bus (Desktop Notifications standard 1.2). Nothing is
/// asked of the bus before the first notification.
class DesktopNotifications final : public QObject, public NotificationPresenter {
    Q_OBJECT

public:
    /// `desktopFile` is the name of the program's desktop file, without its ending.
    explicit DesktopNotifications(QString desktopFile);

    void show(const std::string& identifier, const NotificationContent& content, Answer answer) override;

    /// Sends nothing more; what was not sent is never answered.
    void stop() { stopped_ = true; }

    /// Whether a notification is on its way to the server, who may have it without our knowing yet.
    bool busy() const { return sending_; }

    Signal<> idle; ///< busy() no longer, after stop()

private:
    struct Waiting {
        std::string identifier;
        NotificationContent content;
        Answer answer;
    };

    void findServer();
    void sendNext();
    void send(const Waiting& next);
    void finish(bool delivered);

private Q_SLOTS:
    void notificationClosed(uint id, uint reason);

private:
    const QString desktopFile_;
    QDBusConnection bus_ = QDBusConnection::sessionBus();
    QDBusServiceWatcher watcher_;
    std::optional<bool> takesMarkup_; ///< of the server that is there now; absent until it has told
    std::deque<Waiting> waiting_;     ///< the first is on its way while sending_
    bool sending_ = false;
    bool stopped_ = false;
    std::map<std::string, uint> shown_; ///< the server's number of what is still to be seen, by identifier
    std::optional<NotificationContent> last_;
    QElapsedTimer sinceLast_;
    QTimer pause_;
};

} // namespace quillo

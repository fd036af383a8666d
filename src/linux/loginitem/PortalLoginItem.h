/// Starting at login as a sandboxed program asks for it.
#pragma once

#include "ports/LoginItem.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace quillo {

/// org.freedesktop.portal.Background on the session bus
/// (https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.Background.html). The user
/// may be asked. The portal does not tell what is set.
class PortalLoginItem final : public QObject, public LoginItem {
    Q_OBJECT

public:
    /// `reason` tells the user why the program asks.
    explicit PortalLoginItem(QString reason);

    void read(std::function<void(std::optional<bool>)> answer) override;
    void change(bool startsAtLogin, std::function<void(Outcome)> answer) override;

private:
    void request(const QString& portal, bool startsAtLogin, const std::function<void(Outcome)>& answer);

    const QString reason_;
    QDBusConnection bus_ = QDBusConnection::sessionBus();
};

} // namespace quillo

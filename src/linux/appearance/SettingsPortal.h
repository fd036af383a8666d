/// The desktop's settings, from its settings portal.
#pragma once

#include "base/Signal.h"
#include "linux/appearance/AppearanceRules.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QString>

namespace quillo {

/// org.freedesktop.portal.Settings on the session bus. Asks once, and again whenever another portal comes up;
/// in between it is told of changes. A portal that goes away takes nothing back.
/// https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.Settings.html
class SettingsPortal final : public QObject {
    Q_OBJECT

public:
    SettingsPortal();

    /// Those of settings::all that the desktop has; none before it has answered.
    const SettingValues& values() const { return values_; }

    Signal<> changed;

private:
    void readAll();
    void readEach(const QString& method);
    void readOne(const SettingName& name, const QString& method);
    void keep(const QString& space, const QString& key, const QVariant& value);

private Q_SLOTS:
    void settingChanged(const QString& space, const QString& key, const QDBusVariant& value,
                        const QDBusMessage& message);

private:
    QDBusConnection bus_ = QDBusConnection::sessionBus();
    QDBusServiceWatcher watcher_;
    QString owner_; ///< of the portal, as the bus names connections; empty before it has answered
    SettingValues values_;
};

} // namespace quillo

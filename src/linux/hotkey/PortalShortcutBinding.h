/// The shortcut as the desktop's portal offers it, for Wayland first of all.
#pragma once

#include "linux/hotkey/ShortcutBinding.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <cstdint>
#include <functional>
#include <optional>

namespace quillo {

/// org.freedesktop.portal.GlobalShortcuts on the session bus, a session a shortcut
/// (https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.GlobalShortcuts.html). The
/// user may be asked, and decides in the desktop's settings which key it really is. Asks again by itself
/// when the portal was restarted.
class PortalShortcutBinding final : public QObject, public ShortcutBinding {
    Q_OBJECT

public:
    /// `applicationId` names the program's desktop file, without its ending. `description` tells the user, in
    /// the desktop's settings, what the shortcut does.
    PortalShortcutBinding(QString applicationId, QString description);
    ~PortalShortcutBinding() override;

    void bind(const HotKeyConfig& config, std::function<void(const BindingOutcome&)> answer) override;
    void release() override;
    void configure() override;

private:
    void findPortal();
    void introduceOurselves();
    void askVersion();
    void createSession();
    void createWantedSession();
    void findShortcut();
    void bindShortcut();
    void closeSession(const QString& session);
    void forgetPortal();
    void portalOwnerChanged(const QString& owner);
    void tellKeys(const QString& description);
    void finish(const BindingOutcome& outcome);
    QDBusMessage call(const QString& interface, const QString& method) const;
    QString sessionToken() const;
    QVariant shortcuts() const;

private Q_SLOTS:
    void activated(const QDBusObjectPath& session, const QString& shortcut, qulonglong timestamp,
                   const QVariantMap& options);
    void shortcutsChanged(const QDBusMessage& message);

private:
    const QString applicationId_;
    const QString description_;
    std::optional<QDBusConnection> bus_;
    QDBusServiceWatcher watcher_;
    QString portal_;                     ///< the portal's unique name on the bus; empty where none is known
    bool configurable_ = false;          ///< the portal has a dialog of its own for shortcuts
    bool introducing_ = false;           ///< the portal's name is about to be known
    std::uint64_t attempt_ = 0;          ///< answers to earlier ones come to nothing
    std::optional<std::string> trigger_; ///< what was asked for and not refused
    std::function<void(const BindingOutcome&)> answer_;
    QString session_;              ///< its object path; empty while there is none
    bool creatingSession_ = false; ///< one is asked for, and not answered yet
    int closingSessions_ = 0;      ///< that were given up and may be there yet
    bool sessionWanted_ = false;   ///< once neither is so any more
};

} // namespace quillo

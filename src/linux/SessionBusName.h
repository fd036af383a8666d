/// The program's place on the session bus.
#pragma once

#include "base/Signal.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <string>

namespace quillo {

/// Owns the well-known name org.quillo.Quillo and answers for it as a desktop application does
/// (org.freedesktop.Application of the Desktop Entry Specification): started by its name, asked to come up,
/// asked for one of its actions. There may be no session bus at all (ssh, cron): then nothing comes of it.
class SessionBusName final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Outcome { Owned, OwnedByAnother, NoBus };

    /// Asks for the name. The one wait for the bus that there is: two rounds, at start.
    Outcome acquire();

    /// Gives the name back, so that who asks for it starts the program anew.
    void release();

    /// Asks whoever owns the name to come up.
    static void activateOwner();

    Signal<> activated;                         ///< asked to come up
    Signal<const std::string&> actionActivated; ///< the name of the action
    Signal<> busLost;                           ///< the session is over, or its bus died

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private Q_SLOTS:
    void disconnected();
};

} // namespace quillo

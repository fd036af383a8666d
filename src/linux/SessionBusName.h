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
/// (org.freedesktop.Application of the Desktop Entry standard): started by its name, asked to come up,
/// asked for one of its actions. There may be no session bus at all (ssh, cron): then nothing comes of it.
class SessionBusName final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Outcome { Owned, OwnedByAnother, Refused, NoBus };

    /// Asks for the name; waits for the bus's answer, at start. Follows the bus from then on, whoever has the
    /// name.
    Outcome acquire();

    /// Gives the name back, if it is ours, so that who asks for it starts the program anew. Does not wait.
    void release();

    /// Asked to come up, or for the action of that name; with a token with which a window may take the focus,
    /// or an empty one.
    Signal<const std::string& /*token*/> activated;
    Signal<const std::string& /*action*/, const std::string& /*token*/> actionActivated;
    Signal<> busLost; ///< the session is over, or its bus died

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private Q_SLOTS:
    void disconnected();

private:
    bool owned_ = false;
};

} // namespace quillo

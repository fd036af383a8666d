#include "linux/SessionBusName.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

namespace quillo {

namespace {

const QString name = QStringLiteral("org.quillo.Quillo");
const QString path = QStringLiteral("/org/quillo/Quillo");
const QString interface = QStringLiteral("org.freedesktop.Application");

} // namespace

SessionBusName::Outcome SessionBusName::acquire() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return Outcome::NoBus;
    // The object first: who finds the name may ask at once.
    bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        bus.interface()->registerService(name);
    if (!reply.isValid() || reply.value() != QDBusConnectionInterface::ServiceRegistered) {
        bus.unregisterObject(path);
        return reply.isValid() ? Outcome::OwnedByAnother : Outcome::NoBus;
    }
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SLOT(disconnected()));
    return Outcome::Owned;
}

void SessionBusName::release() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(path);
    bus.unregisterService(name);
}

void SessionBusName::activateOwner() {
    QDBusMessage activate = QDBusMessage::createMethodCall(name, path, interface, QStringLiteral("Activate"));
    activate << QVariantMap();
    QDBusConnection::sessionBus().call(activate);
}

void SessionBusName::Activate(const QVariantMap&) {
    activated.emit();
}

/// There is nothing that could be opened; asking is asking to come up.
void SessionBusName::Open(const QStringList&, const QVariantMap&) {
    activated.emit();
}

void SessionBusName::ActivateAction(const QString& action, const QVariantList&, const QVariantMap&) {
    actionActivated.emit(action.toStdString());
}

void SessionBusName::disconnected() {
    busLost.emit();
}

} // namespace quillo

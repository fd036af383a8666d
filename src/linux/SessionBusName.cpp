#include "linux/SessionBusName.h"

#include "base/Product.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <utility>

namespace quillo {

namespace {

const QString name = QString::fromLatin1(product::desktopFile);
const QString applicationPath = QStringLiteral("/org/quillo/Quillo");

/// As the Desktop Entry standard, "D-Bus Activation", has it.
std::string tokenIn(const QVariantMap& platformData) {
    return platformData.value(QStringLiteral("activation-token")).toString().toStdString();
}

} // namespace

SessionBusName::Outcome SessionBusName::acquire() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return Outcome::NoBus;
    // The object first: who finds the name may ask at once.
    bus.registerObject(applicationPath, this, QDBusConnection::ExportAllSlots);
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        bus.interface()->registerService(name);
    owned_ = reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
    if (!owned_)
        bus.unregisterObject(applicationPath);
    bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                SLOT(disconnected()));
    if (!reply.isValid())
        return Outcome::Refused;
    return owned_ ? Outcome::Owned : Outcome::OwnedByAnother;
}

void SessionBusName::release() {
    if (!std::exchange(owned_, false))
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(applicationPath);
    const QString daemon = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage release = QDBusMessage::createMethodCall(daemon, QStringLiteral("/org/freedesktop/DBus"),
                                                          daemon, QStringLiteral("ReleaseName"));
    release << name;
    bus.send(release); // Does not wait for a bus that may hang.
}

void SessionBusName::Activate(const QVariantMap& platformData) {
    activated.emit(tokenIn(platformData));
}

/// There is nothing that could be opened; asking is asking to come up.
void SessionBusName::Open(const QStringList&, const QVariantMap& platformData) {
    activated.emit(tokenIn(platformData));
}

void SessionBusName::ActivateAction(const QString& action, const QVariantList&,
                                    const QVariantMap& platformData) {
    actionActivated.emit(action.toStdString(), tokenIn(platformData));
}

void SessionBusName::disconnected() {
    busLost.emit();
}

} // namespace quillo

#include "moc_SessionBusName.cpp"

#include "linux/statusitem/DBusMenuTypes.h"

#include <QDBusMetaType>

namespace quillo {

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuProperties& line) {
    argument.beginStructure();
    argument << line.id << line.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuProperties& line) {
    argument.beginStructure();
    argument >> line.id >> line.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuRemovedProperties& line) {
    argument.beginStructure();
    argument << line.id << line.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuRemovedProperties& line) {
    argument.beginStructure();
    argument >> line.id >> line.names;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuLine& line) {
    argument.beginStructure();
    argument << line.id << line.properties << line.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuLine& line) {
    argument.beginStructure();
    argument >> line.id >> line.properties >> line.children;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

void registerDBusMenuTypes() {
    qDBusRegisterMetaType<DBusMenuProperties>();
    qDBusRegisterMetaType<QList<DBusMenuProperties>>();
    qDBusRegisterMetaType<DBusMenuRemovedProperties>();
    qDBusRegisterMetaType<QList<DBusMenuRemovedProperties>>();
    qDBusRegisterMetaType<DBusMenuLine>();
    qDBusRegisterMetaType<DBusMenuEvent>();
    qDBusRegisterMetaType<QList<DBusMenuEvent>>();
    qDBusRegisterMetaType<DBusMenuShortcut>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
}

} // namespace quillo

/// What a menu looks like on its way over the bus: the structures of com.canonical.dbusmenu.
#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace quillo {

/// (ia{sv}): a line and what is known of it.
struct DBusMenuProperties {
    int id = 0;
    QVariantMap properties;
};

/// (ias): a line and the names of what is no longer known of it.
struct DBusMenuRemovedProperties {
    int id = 0;
    QStringList names;
};

/// (ia{sv}av): a line with those below it, each of which is such a line again.
struct DBusMenuLine {
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children;
};

/// (isvu): something happened to a line in the panel.
struct DBusMenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

/// aas: key combinations, one after the other, each with its modifiers first.
using DBusMenuShortcut = QList<QStringList>;

QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuProperties& line);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuProperties& line);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuRemovedProperties& line);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuRemovedProperties& line);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuLine& line);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuLine& line);
QDBusArgument& operator<<(QDBusArgument& argument, const DBusMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, DBusMenuEvent& event);

/// Tells Qt's bus of all of them. Can be called more than once.
void registerDBusMenuTypes();

} // namespace quillo

/// The status item's menu for panels that show it by themselves.
#pragma once

#include "linux/statusitem/DBusMenuTypes.h"
#include "ports/StatusItem.h"

#include <QDBusContext>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <vector>

namespace quillo {

/// com.canonical.dbusmenu, version 3, of a menu without submenus. The interface is described in libdbusmenu's
/// dbus-menu.xml. What panels send is not trusted: unknown numbers and overlong lists are refused.
class DBusMenu final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    static constexpr const char* path = "/StatusNotifierItem/Menu";

    DBusMenu();

    /// Asked for the menu whenever a panel is about to show it, and at once.
    void setMaker(StatusItem::MenuMaker maker);

    uint version() const { return 3; }
    QString textDirection() const;
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

    // Qt finds the types of these by the names that stand here: in full.
public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   quillo::DBusMenuLine& layout);
    QList<quillo::DBusMenuProperties> GetGroupProperties(const QList<int>& ids,
                                                         const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<quillo::DBusMenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<quillo::DBusMenuProperties>& updated,
                                const QList<quillo::DBusMenuRemovedProperties>& removed);
    void LayoutUpdated(uint revision, int parent);
    void ItemActivationRequested(int id, uint timestamp);

private:
    struct Line {
        int id = 0;
        MenuItem item;
    };

    const Line* find(int id) const;
    bool known(int id) const;
    bool refresh();
    bool handle(int id, const QString& event);
    void refuse(const QString& why) const;

    StatusItem::MenuMaker maker_;
    std::vector<Line> lines_;
    int lastId_ = 0; ///< numbers are not used twice: a panel may still show an earlier menu
    uint revision_ = 1;
};

} // namespace quillo

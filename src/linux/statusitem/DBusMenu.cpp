#include "linux/statusitem/DBusMenu.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QMetaObject>
#include <algorithm>
#include <utility>

namespace quillo {

namespace {

/// The menu itself, above its lines.
constexpr int root = 0;

/// No panel asks for more at once: a line has a handful of properties, and a menu a dozen lines.
constexpr qsizetype longestList = 256;

/// An underscore marks the letter that chooses the line; ours have none, so what there is stands for itself.
QString label(const std::string& title) {
    return QString::fromStdString(title).replace(QLatin1Char('_'), QStringLiteral("__"));
}

/// "Ctrl+N" as the keys' names in the menu protocol.
DBusMenuShortcut shortcut(const std::string& text) {
    QStringList keys = QString::fromStdString(text).split(QLatin1Char('+'), Qt::SkipEmptyParts);
    for (QString& key : keys) {
        if (key == QLatin1String("Ctrl"))
            key = QStringLiteral("Control");
        else if (key == QLatin1String("Meta"))
            key = QStringLiteral("Super");
    }
    return {keys};
}

QVariantMap propertiesOf(const MenuItem& item) {
    switch (item.kind) {
    case MenuItem::Kind::separator:
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    case MenuItem::Kind::action:
        break;
    }
    QVariantMap properties{{QStringLiteral("label"), label(item.title)},
                           {QStringLiteral("enabled"), item.action != nullptr}};
    if (!item.shortcut.empty())
        properties.insert(QStringLiteral("shortcut"), QVariant::fromValue(shortcut(item.shortcut)));
    return properties;
}

QVariantMap rootProperties() {
    return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
}

/// Those of the names; all if there are none.
QVariantMap chosen(QVariantMap properties, const QStringList& names) {
    if (!names.isEmpty())
        properties.removeIf([&](const auto& property) { return !names.contains(property.key()); });
    return properties;
}

bool looksTheSame(const MenuItem& one, const MenuItem& other) {
    return one.kind == other.kind && one.title == other.title && one.shortcut == other.shortcut &&
           (one.action != nullptr) == (other.action != nullptr);
}

} // namespace

DBusMenu::DBusMenu() {
    registerDBusMenuTypes();
}

void DBusMenu::setMaker(StatusItem::MenuMaker maker) {
    maker_ = std::move(maker);
    refresh();
}

QString DBusMenu::textDirection() const {
    return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

const DBusMenu::Line* DBusMenu::find(int id) const {
    const auto line = std::find_if(lines_.begin(), lines_.end(), [id](const Line& l) { return l.id == id; });
    return line != lines_.end() ? &*line : nullptr;
}

bool DBusMenu::known(int id) const {
    return id == root || find(id);
}

/// Asks for the menu. Returns whether it looks different now.
bool DBusMenu::refresh() {
    std::vector<MenuItem> items = maker_ ? maker_() : std::vector<MenuItem>();
    const bool same =
        std::equal(items.begin(), items.end(), lines_.begin(), lines_.end(),
                   [](const MenuItem& item, const Line& line) { return looksTheSame(item, line.item); });
    if (same) {
        // The actions may be others.
        for (std::size_t i = 0; i < items.size(); ++i)
            lines_[i].item = std::move(items[i]);
        return false;
    }
    lines_.clear();
    for (MenuItem& item : items)
        lines_.push_back({++lastId_, std::move(item)});
    ++revision_;
    Q_EMIT LayoutUpdated(revision_, root);
    return true;
}

void DBusMenu::refuse(const QString& why) const {
    if (message().isReplyRequired())
        sendErrorReply(QDBusError::InvalidArgs, why);
}

uint DBusMenu::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                         DBusMenuLine& layout) {
    layout.id = parentId;
    const Line* line = find(parentId);
    if (propertyNames.size() > longestList || (parentId != root && !line)) {
        refuse(QStringLiteral("there is no such line, or too much was asked for"));
        return 0;
    }
    if (line) {
        layout.properties = chosen(propertiesOf(line->item), propertyNames);
        return revision_;
    }
    layout.properties = chosen(rootProperties(), propertyNames);
    // There is one level: any depth but none reaches it, below zero means all.
    if (recursionDepth != 0) {
        for (const Line& child : lines_) {
            const DBusMenuLine below{child.id, chosen(propertiesOf(child.item), propertyNames), {}};
            layout.children.append(QDBusVariant(QVariant::fromValue(below)));
        }
    }
    return revision_;
}

QList<DBusMenuProperties> DBusMenu::GetGroupProperties(const QList<int>& ids,
                                                       const QStringList& propertyNames) {
    QList<DBusMenuProperties> group;
    if (ids.size() > longestList || propertyNames.size() > longestList) {
        refuse(QStringLiteral("too much was asked for"));
        return group;
    }
    const auto wanted = [&](int id) { return ids.isEmpty() || ids.contains(id); };
    if (wanted(root))
        group.append({root, chosen(rootProperties(), propertyNames)});
    for (const Line& line : lines_) {
        if (wanted(line.id))
            group.append({line.id, chosen(propertiesOf(line.item), propertyNames)});
    }
    return group;
}

QDBusVariant DBusMenu::GetProperty(int id, const QString& name) {
    const Line* line = find(id);
    const QVariantMap properties = line         ? propertiesOf(line->item)
                                   : id == root ? rootProperties()
                                                : QVariantMap();
    if (!properties.contains(name)) {
        refuse(QStringLiteral("there is no such line, or nothing of that name is known of it"));
        return QDBusVariant(QString());
    }
    return QDBusVariant(properties.value(name));
}

/// Does what the line is there for, if it was chosen. False if there is no such line.
bool DBusMenu::handle(int id, const QString& event) {
    if (!known(id))
        return false;
    const Line* line = find(id);
    if (line && line->item.action && event == QLatin1String("clicked")) {
        // The panel gets its answer first, and takes its menu away.
        QMetaObject::invokeMethod(
            this, [action = line->item.action] { action(); }, Qt::QueuedConnection);
    }
    return true;
}

void DBusMenu::Event(int id, const QString& eventId, const QDBusVariant&, uint) {
    if (!handle(id, eventId))
        refuse(QStringLiteral("there is no such line"));
}

QList<int> DBusMenu::EventGroup(const QList<DBusMenuEvent>& events) {
    QList<int> unknown;
    if (events.size() > longestList) {
        refuse(QStringLiteral("too many events"));
        return unknown;
    }
    for (const DBusMenuEvent& event : events) {
        if (!handle(event.id, event.name))
            unknown.append(event.id);
    }
    if (!events.isEmpty() && unknown.size() == events.size())
        refuse(QStringLiteral("there are no such lines"));
    return unknown;
}

bool DBusMenu::AboutToShow(int id) {
    if (!known(id)) {
        refuse(QStringLiteral("there is no such line"));
        return false;
    }
    return id == root && refresh();
}

QList<int> DBusMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    QList<int> needUpdate;
    if (ids.size() > longestList) {
        refuse(QStringLiteral("too many lines"));
        return needUpdate;
    }
    for (const int id : ids) {
        if (!known(id))
            idErrors.append(id);
    }
    if (ids.contains(root) && refresh())
        needUpdate.append(root);
    return needUpdate;
}

} // namespace quillo

#include "moc_DBusMenu.cpp"

/// Where the status item is made known.
#pragma once

#include "base/Signal.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

namespace quillo {

/// Follows org.kde.StatusNotifierWatcher, through which panels hear of status items, and makes the item of
/// the connection known to every one that comes up. Panels start late and are restarted.
class StatusBarWatch final : public QObject {
    Q_OBJECT

public:
    explicit StatusBarWatch(QDBusConnection bus);

    /// Begins. The item is there by then.
    void start();

    bool hasBar() const { return !watcher_.isEmpty(); }

    /// There is one; the item is made known to it right after. `showsLabels`: whether it shows the text
    /// beside the icon.
    Signal<bool> found;
    Signal<> lost;

private:
    void findWatcher();
    void watcherIs(const QString& owner);
    void askForLabels();
    void registerItem();
    void lose();

private Q_SLOTS:
    void disconnected();

private:
    QDBusConnection bus_;
    QDBusServiceWatcher follow_;
    QString watcher_; ///< as the bus names connections; empty while there is none
};

} // namespace quillo

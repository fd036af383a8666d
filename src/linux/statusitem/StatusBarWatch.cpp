#include "linux/statusitem/StatusBarWatch.h"

#include "base/Log.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <array>
#include <memory>
#include <utility>

namespace quillo {

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");

/// Those who show XAyatanaLabel: GNOME's extension lives in its shell, the indicator services of Ayatana and
/// of Ubuntu own these names beside that of the watcher.
const std::array labelledBars{QStringLiteral("org.gnome.Shell"),
                              QStringLiteral("org.ayatana.indicator.application"),
                              QStringLiteral("com.canonical.indicator.application")};

QDBusMessage ownerOf(const QString& name) {
    const QString daemon = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage question = QDBusMessage::createMethodCall(daemon, QStringLiteral("/org/freedesktop/DBus"),
                                                           daemon, QStringLiteral("GetNameOwner"));
    question << name;
    return question;
}

} // namespace

StatusBarWatch::StatusBarWatch(QDBusConnection bus) : bus_(std::move(bus)) {}

void StatusBarWatch::start() {
    if (!bus_.isConnected())
        return;
    follow_.setConnection(bus_);
    follow_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    follow_.addWatchedService(watcherName);
    connect(&follow_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) { watcherIs(owner); });
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                 QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                 SLOT(disconnected()));
    findWatcher();
}

void StatusBarWatch::findWatcher() {
    auto* reply = new QDBusPendingCallWatcher(bus_.asyncCall(ownerOf(watcherName)), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QString> owner = *finished;
        if (!owner.isError())
            watcherIs(owner.value());
    });
}

/// Told twice where it comes up while we ask for it.
void StatusBarWatch::watcherIs(const QString& owner) {
    if (owner == watcher_)
        return;
    if (owner.isEmpty()) {
        lose();
        return;
    }
    watcher_ = owner;
    askForLabels();
}

void StatusBarWatch::askForLabels() {
    struct Answers {
        std::size_t missing = labelledBars.size();
        bool showsLabels = false;
    };
    const auto answers = std::make_shared<Answers>();
    for (const QString& name : labelledBars) {
        auto* reply = new QDBusPendingCallWatcher(bus_.asyncCall(ownerOf(name)), this);
        connect(reply, &QDBusPendingCallWatcher::finished, this,
                [this, answers, watcher = watcher_](QDBusPendingCallWatcher* finished) {
                    finished->deleteLater();
                    const QDBusPendingReply<QString> owner = *finished;
                    answers->showsLabels |= !owner.isError() && owner.value() == watcher;
                    if (--answers->missing > 0 || watcher != watcher_)
                        return;
                    found.emit(answers->showsLabels);
                    registerItem();
                });
    }
}

void StatusBarWatch::registerItem() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(watcherName, QStringLiteral("/StatusNotifierWatcher"), watcherName,
                                       QStringLiteral("RegisterStatusNotifierItem"));
    call << bus_.baseService();
    auto* reply = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this,
            [this, watcher = watcher_](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                // One that went away meanwhile could not answer; its successor is told by itself.
                if (!finished->isError() || watcher != watcher_)
                    return;
                log("the panel does not take the status item: " + finished->error().message().toStdString());
                lose();
            });
}

void StatusBarWatch::lose() {
    watcher_.clear();
    lost.emit();
}

void StatusBarWatch::disconnected() {
    log("the status item cannot be reached any more: the session bus is gone");
    lose();
}

} // namespace quillo

#include "moc_StatusBarWatch.cpp"

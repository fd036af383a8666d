#include "linux/DesktopNotifications.h"

#include "base/Log.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>
#include <utility>

namespace quillo {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");

/// Plasma takes two notifications that say the same within a second for one gone wild, and drops the second.
constexpr qint64 apartMilliseconds = 1100;

QDBusMessage call(const char* method) {
    return QDBusMessage::createMethodCall(service, path, service, QString::fromLatin1(method));
}

/// By the three levels of the Desktop Notifications standard. Critical ones stay until they are seen and are
/// shown when the user does not want to be disturbed.
uchar urgency(InterruptionLevel level) {
    switch (level) {
    case InterruptionLevel::passive:
        return 0;
    case InterruptionLevel::active:
        return 1;
    case InterruptionLevel::timeSensitive:
    case InterruptionLevel::critical:
        break;
    }
    return 2;
}

} // namespace

DesktopNotifications::DesktopNotifications(QString desktopFile) : desktopFile_(std::move(desktopFile)) {
    pause_.setSingleShot(true);
    connect(&pause_, &QTimer::timeout, this, &DesktopNotifications::sendNext);
}

void DesktopNotifications::show(const std::string& identifier, const NotificationContent& content,
                                Answer answer) {
    waiting_.push_back({identifier, content, std::move(answer)});
    if (waiting_.size() == 1)
        sendNext();
}

/// Follows who shows notifications: a desktop's panel may be restarted, or come up later than we do.
void DesktopNotifications::findServer() {
    if (!watcher_.watchedServices().isEmpty())
        return;
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    watcher_.addWatchedService(service);
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& owner) {
                takesMarkup_.reset();
                shown_.clear(); // Its numbers mean nothing to another server.
                if (!owner.isEmpty())
                    becameAvailable.emit();
            });
    bus_.connect(service, path, service, QStringLiteral("NotificationClosed"), this,
                 SLOT(notificationClosed(uint, uint)));
}

void DesktopNotifications::sendNext() {
    if (stopped_ || sending_ || waiting_.empty() || pause_.isActive())
        return;
    if (!bus_.isConnected()) {
        log("a notification cannot be shown: there is no session bus");
        finish(false);
        return;
    }
    const Waiting& next = waiting_.front();
    if (last_ == next.content && sinceLast_.elapsed() < apartMilliseconds) {
        pause_.start(static_cast<int>(apartMilliseconds - sinceLast_.elapsed()));
        return;
    }
    findServer();
    sending_ = true;
    if (takesMarkup_) {
        send(next);
        return;
    }
    auto* reply = new QDBusPendingCallWatcher(bus_.asyncCall(call("GetCapabilities")), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QStringList> capabilities = *finished;
        if (capabilities.isError()) {
            log("a notification cannot be shown: " + capabilities.error().message().toStdString());
            finish(false);
            return;
        }
        takesMarkup_ = capabilities.value().contains(QStringLiteral("body-markup"));
        if (stopped_)
            finish(false);
        else
            send(waiting_.front());
    });
}

void DesktopNotifications::send(const Waiting& next) {
    QString body = QString::fromStdString(next.content.body);
    if (takesMarkup_.value_or(false))
        body = body.toHtmlEscaped();
    QVariantMap hints{
        {QStringLiteral("urgency"), QVariant::fromValue(urgency(next.content.interruptionLevel))},
        {QStringLiteral("desktop-entry"), desktopFile_}};
    if (next.content.sound)
        hints.insert(QStringLiteral("sound-name"), QStringLiteral("alarm-clock-elapsed"));
    else
        hints.insert(QStringLiteral("suppress-sound"), true);
    const auto replaced = shown_.find(next.identifier);
    QDBusMessage notify = call("Notify");
    notify << QStringLiteral("Quillo") << (replaced != shown_.end() ? replaced->second : 0U) << desktopFile_
           << QString::fromStdString(next.content.title) << body << QStringList() << hints << -1;

    auto* reply = new QDBusPendingCallWatcher(bus_.asyncCall(notify), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<uint> id = *finished;
        if (id.isError()) {
            log("a notification cannot be shown: " + id.error().message().toStdString());
            finish(false);
            return;
        }
        const Waiting& sent = waiting_.front();
        shown_[sent.identifier] = id.value();
        last_ = sent.content;
        sinceLast_.start();
        finish(true);
    });
}

/// Answers for the first that waits.
void DesktopNotifications::finish(bool delivered) {
    sending_ = false;
    const Answer answer = std::move(waiting_.front().answer);
    waiting_.pop_front();
    answer(delivered);
    if (stopped_)
        idle.emit();
    else
        sendNext();
}

void DesktopNotifications::notificationClosed(uint id, uint) {
    std::erase_if(shown_, [id](const auto& entry) { return entry.second == id; });
}

} // namespace quillo

#include "moc_DesktopNotifications.cpp"

#include "linux/loginitem/PortalLoginItem.h"

#include "linux/portal/Portal.h"
#include "linux/portal/PortalRequest.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QMetaObject>
#include <QStringList>
#include <QVariantMap>
#include <utility>

namespace quillo {

namespace {

const QString background = QStringLiteral("org.freedesktop.portal.Background");

} // namespace

PortalLoginItem::PortalLoginItem(QString reason) : reason_(std::move(reason)) {}

void PortalLoginItem::read(std::function<void(std::optional<bool>)> answer) {
    QMetaObject::invokeMethod(
        this, [answer = std::move(answer)] { answer(std::nullopt); }, Qt::QueuedConnection);
}

/// Any call starts the portal where it does not run yet, and its answer tells by which name it is on the bus.
void PortalLoginItem::change(bool startsAtLogin, std::function<void(Outcome)> answer) {
    QDBusMessage question = QDBusMessage::createMethodCall(portal::service, portal::path, portal::properties,
                                                           QStringLiteral("Get"));
    question << background << QStringLiteral("version");
    auto* reply = new QDBusPendingCallWatcher(bus_.asyncCall(question), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this,
            [this, startsAtLogin, answer = std::move(answer)](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                const QDBusPendingReply<QDBusVariant> version = *finished;
                if (version.isError())
                    answer(Error{"the desktop's portal starts no programs at login: " +
                                 version.error().message().toStdString()});
                else
                    request(version.reply().service(), startsAtLogin, answer);
            });
}

void PortalLoginItem::request(const QString& portal, bool startsAtLogin,
                              const std::function<void(Outcome)>& answer) {
    const QString token = PortalRequest::newToken();
    const QString noWindow;
    QDBusMessage question =
        QDBusMessage::createMethodCall(portal, portal::path, background, QStringLiteral("RequestBackground"));
    question << noWindow
             << QVariantMap{{QStringLiteral("handle_token"), token},
                            {QStringLiteral("reason"), reason_},
                            {QStringLiteral("autostart"), startsAtLogin},
                            {QStringLiteral("commandline"), QStringList{QStringLiteral("quillo-desktop")}},
                            {QStringLiteral("dbus-activatable"), false}};
    const auto hear = [startsAtLogin, answer](const Result<PortalResponse>& outcome) {
        if (!outcome)
            answer(Error{"the desktop's portal did not answer: " + outcome.error().message});
        else if (outcome->code != PortalResponse::success)
            answer(Error{"starting at login was not allowed"});
        else if (outcome->results.value(QStringLiteral("autostart")).toBool() != startsAtLogin)
            answer(Error{"the desktop's portal has decided otherwise about starting at login"});
        else
            answer(success());
    };
    new PortalRequest(bus_, question, token, hear, this);
}

} // namespace quillo

#include "moc_PortalLoginItem.cpp"

#include "linux/portal/PortalRequest.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUuid>
#include <utility>

namespace quillo {

QString PortalRequest::newToken() {
    return QStringLiteral("quillo_") + QUuid::createUuid().toString(QUuid::Id128);
}

PortalRequest::PortalRequest(const QDBusConnection& bus, const QDBusMessage& call, const QString& token,
                             Answer answer, QObject* parent)
    : QObject(parent), bus_(bus), portal_(call.service()), answer_(std::move(answer)) {
    // Where the request will be is known beforehand, so that no answer is too early to be heard.
    const QString sender = bus.baseService().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
    listen(QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token));
    auto* reply = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(reply, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> request = *finished;
        if (request.isError())
            finish(Error{request.error().message().toStdString()});
        else if (request.value().path() != path_)
            listen(request.value().path()); // Portals before version 0.9 choose for themselves.
    });
}

void PortalRequest::listen(const QString& path) {
    path_ = path;
    bus_.connect(portal_, path, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"),
                 this, SLOT(response(uint, QVariantMap)));
}

void PortalRequest::response(uint code, const QVariantMap& results) {
    finish(PortalResponse{code, results});
}

void PortalRequest::finish(const Result<PortalResponse>& outcome) {
    deleteLater();
    if (const Answer answer = std::exchange(answer_, nullptr))
        answer(outcome);
}

} // namespace quillo

#include "moc_PortalRequest.cpp"

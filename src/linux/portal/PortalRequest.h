/// A question to a desktop portal that takes its time to answer: it may ask the user first.
#pragma once

#include "base/Result.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <functional>

namespace quillo {

/// What the portal answered with in the end.
struct PortalResponse {
    static constexpr uint success = 0;
    static constexpr uint cancelledByUser = 1;

    uint code = success; ///< of those above; others are failures of other kinds
    QVariantMap results; ///< foreign
};

/// Calls a portal's method and waits for the Response signal of the request that the method returns
/// (https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.Request.html). Deletes
/// itself after its answer; deleted before, it answers no more.
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    /// The portal's response; an error where the method itself failed.
    using Answer = std::function<void(const Result<PortalResponse>&)>;

    /// A name for a request, for the option "handle_token".
    static QString newToken();

    /// `call` goes to a portal by its unique name, and names `token` as its handle_token.
    PortalRequest(const QDBusConnection& bus, const QDBusMessage& call, const QString& token, Answer answer,
                  QObject* parent);

private:
    void listen(const QString& path);
    void finish(const Result<PortalResponse>& outcome);

private Q_SLOTS:
    void response(uint code, const QVariantMap& results);

private:
    QDBusConnection bus_;
    const QString portal_;
    QString path_;
    Answer answer_;
};

} // namespace quillo

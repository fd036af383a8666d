#include "linux/updates/Fetch.h"

#include "base/Log.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <utility>

namespace quillo {

namespace {

constexpr int mostRedirections = 5;
constexpr int found = 200;

QNetworkRequest requestFor(const QUrl& address) {
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    request.setMaximumRedirectsAllowed(mostRedirections);
    request.setRawHeader("User-Agent", "Quillo");
    // What was compressed can be made small without end.
    request.setRawHeader("Accept-Encoding", "identity");
    return request;
}

} // namespace

Fetch::Fetch(QNetworkAccessManager& network, const QUrl& address, const FetchLimits& limits, Allowed allowed,
             Received received, Done done)
    : limits_(limits), allowed_(std::move(allowed)), received_(std::move(received)), done_(std::move(done)),
      reply_(network.get(requestFor(address))) {
    QObject::connect(reply_, &QNetworkReply::redirected, reply_, [this](const QUrl& target) {
        // Qt loses the address at times, where the connection is closed behind the redirection.
        if (target.isEmpty())
            end(UpdateFailure::unreachable);
        else if (allowed_(target))
            Q_EMIT reply_->redirectAllowed();
        else
            end(UpdateFailure::insecure);
    });
    QObject::connect(reply_, &QNetworkReply::readyRead, reply_, [this] { read(); });
    QObject::connect(reply_, &QNetworkReply::finished, reply_, [this] {
        const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (reply_->error() == QNetworkReply::NoError && status == found)
            end(std::nullopt);
        else {
            log("looking for releases: " + reply_->errorString().toStdString());
            end(UpdateFailure::unreachable);
        }
    });
    const auto tooSlow = [this] { end(UpdateFailure::tooSlow); };
    silence_.setSingleShot(true);
    silence_.callOnTimeout(reply_, tooSlow);
    silence_.start(limits_.pause);
    whole_.setSingleShot(true);
    whole_.callOnTimeout(reply_, tooSlow);
    if (limits_.whole)
        whole_.start(*limits_.whole);
}

Fetch::~Fetch() {
    reply_->disconnect();
    reply_->abort();
    reply_->deleteLater();
}

void Fetch::read() {
    const QByteArray part = reply_->readAll();
    // What a server says to an error or a redirection is nobody's business.
    if (reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != found)
        return;
    bytes_ += static_cast<std::uint64_t>(part.size());
    silence_.start(limits_.pause);
    if (bytes_ > limits_.bytes)
        end(UpdateFailure::feedTooLarge);
    else
        received_(part);
}

/// Says so once.
void Fetch::end(std::optional<UpdateFailure> failure) {
    reply_->disconnect();
    silence_.stop();
    whole_.stop();
    if (const Done done = std::exchange(done_, nullptr))
        done(failure);
}

} // namespace quillo

/// What a web server has under an address.
#pragma once

#include "ports/Updater.h"

#include <QByteArray>
#include <QNetworkReply>
#include <QTimer>
#include <QUrl>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;

namespace quillo {

struct FetchLimits {
    std::uint64_t bytes;                            ///< the server may not send more
    std::chrono::milliseconds pause;                ///< nor be silent for longer
    std::optional<std::chrono::milliseconds> whole; ///< nor take longer for all of it
};

/// One request, under way as long as this lives. Follows redirections, but only to addresses that `allowed`
/// lets pass. Sends nothing that tells one user from another. Main thread.
class Fetch {
public:
    using Allowed = std::function<bool(const QUrl&)>;
    using Received = std::function<void(const QByteArray& part)>;
    using Done = std::function<void(std::optional<UpdateFailure>)>; ///< may destroy the fetch

    Fetch(QNetworkAccessManager& network, const QUrl& address, const FetchLimits& limits, Allowed allowed,
          Received received, Done done);
    ~Fetch();

    Fetch(const Fetch&) = delete;
    Fetch& operator=(const Fetch&) = delete;

private:
    void read();
    void end(std::optional<UpdateFailure> failure);

    const FetchLimits limits_;
    const Allowed allowed_;
    const Received received_;
    Done done_;
    std::uint64_t bytes_ = 0;
    QTimer silence_;
    QTimer whole_;
    QNetworkReply* reply_; ///< owned; deleted later, as it may be what is calling
};

} // namespace quillo

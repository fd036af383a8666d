/// Where commands reach the running program.
#pragma once

#include "base/Result.h"
#include "base/Signal.h"
#include "control/Answer.h"
#include "control/Request.h"

#include <QSocketNotifier>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>

namespace quillo {

/// Listens on the control socket of a data folder (control/SocketAddress.h): a request a connection, answered
/// when it is done. Only the user who runs this program is answered. Belongs to the main thread; never waits.
class ControlServer {
public:
    /// Gives the answer, now or later, on the main thread; at most once.
    using Reply = std::function<void(const control::Answer&)>;
    using Handler = std::function<void(const control::Request&, Reply)>;

    /// Takes the place of whatever lies where the socket belongs: only for whoever holds the preferences'
    /// lock, so that it can only be what a program that died has left.
    static Result<std::unique_ptr<ControlServer>> listen(const std::filesystem::path& dataFolder,
                                                         Handler handler);

    /// Closes what is still open, unanswered.
    ~ControlServer();

    ControlServer(const ControlServer&) = delete;
    ControlServer& operator=(const ControlServer&) = delete;

    /// Takes no new connections, after those that wait already; hands every request that has arrived whole to
    /// the handler, and drops the connections of the others.
    void stop();

    /// Whether requests that were handed over are still without an answer, or answers not sent.
    bool busy() const { return !connections_.empty(); }

    Signal<> idle; ///< busy() no longer

private:
    class Connection;

    ControlServer(int descriptor, std::filesystem::path path, Handler handler);
    void accept();
    void remove(Connection* connection);
    void followLimit();

    int descriptor_;
    const std::filesystem::path path_;
    const Handler handler_;
    std::unique_ptr<QSocketNotifier> acceptable_;
    std::set<std::shared_ptr<Connection>> connections_;
};

} // namespace quillo

#include "linux/ControlServer.h"

#include "base/Log.h"
#include "control/Client.h"
#include "control/SocketAddress.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QTimer>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace quillo {

namespace {

/// As many connections are served at once; more wait in the kernel.
constexpr std::size_t mostConnections = 256;

bool isOurUser(int descriptor) {
    ucred peer{};
    socklen_t length = sizeof peer;
    return getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 && peer.uid == geteuid();
}

Error socketError(const std::filesystem::path& path) {
    return {"cannot listen on " + path.string() + ": " + std::strerror(errno)};
}

} // namespace

/// One command: its request comes in, its answer goes out. The server's alone: who answers holds it weakly.
class ControlServer::Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(int descriptor, ControlServer& server)
        : descriptor_(descriptor), server_(server), readable_(descriptor, QSocketNotifier::Read),
          writable_(descriptor, QSocketNotifier::Write) {
        writable_.setEnabled(false);
        QObject::connect(&readable_, &QSocketNotifier::activated, [this] { read(); });
        QObject::connect(&writable_, &QSocketNotifier::activated, [this] { write(); });
        // Who connects and says nothing does not hold a place for ever.
        QObject::connect(&deadline_, &QTimer::timeout, [this] { close(); });
        deadline_.setSingleShot(true);
        deadline_.start(control::patience);
    }

    ~Connection() { ::close(descriptor_); }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Takes what has arrived; once the line is complete, hands it over.
    void read() {
        std::array<char, 65536> buffer;
        for (;;) {
            const ssize_t count = recv(descriptor_, buffer.data(), buffer.size(), 0);
            if (count > 0) {
                const std::string_view arrived(buffer.data(), static_cast<std::size_t>(count));
                received_.append(arrived);
                if (arrived.find('\n') != std::string_view::npos)
                    return handle();
                if (received_.size() > control::longestRequest)
                    return answer(Error{"the request is too long"});
            } else if (count < 0 && errno == EINTR) {
                continue;
            } else if (count < 0 && errno == EAGAIN) {
                return;
            } else { // Half a line may be half of what was meant: nothing is done.
                return close();
            }
        }
    }

    bool handedOver() const { return handedOver_; }

    /// The server lets go of it.
    void close() {
        readable_.setEnabled(false);
        writable_.setEnabled(false);
        deadline_.stop();
        server_.remove(this);
    }

private:
    void handle() {
        readable_.setEnabled(false);
        deadline_.stop();
        handedOver_ = true;
        const Result<control::Request> request = control::decodeRequest(received_);
        if (!request)
            return answer(request.error());
        server_.handler_(*request, [weak = weak_from_this()](const control::Answer& given) {
            if (const auto self = weak.lock())
                self->answer(given);
        });
    }

    void answer(const control::Answer& given) {
        handedOver_ = true;
        readable_.setEnabled(false);
        toSend_ = control::encode(given);
        deadline_.start(control::patience);
        write();
    }

    void write() {
        while (sent_ < toSend_.size()) {
            const ssize_t count =
                send(descriptor_, toSend_.data() + sent_, toSend_.size() - sent_, MSG_NOSIGNAL);
            if (count >= 0)
                sent_ += static_cast<std::size_t>(count);
            else if (errno == EAGAIN)
                return writable_.setEnabled(true);
            else if (errno != EINTR)
                break; // Nobody waits for it any more.
        }
        close();
    }

    const int descriptor_;
    ControlServer& server_;
    QSocketNotifier readable_;
    QSocketNotifier writable_;
    QTimer deadline_;
    std::string received_;
    bool handedOver_ = false;
    std::string toSend_;
    std::size_t sent_ = 0;
};

Result<std::unique_ptr<ControlServer>> ControlServer::listen(const std::filesystem::path& dataFolder,
                                                             Handler handler) {
    const std::optional<std::filesystem::path> path = control::socketPath(dataFolder);
    if (!path)
        return Error{"the path of " + dataFolder.string() + " is too long for a control socket"};
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0)
        return socketError(*path);
    std::unique_ptr<ControlServer> server(new ControlServer(descriptor, *path, std::move(handler)));
    unlink(path->c_str());
    const sockaddr_un address = control::socketAddress(*path);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        chmod(path->c_str(), 0600) != 0 || ::listen(descriptor, SOMAXCONN) != 0)
        return socketError(*path);
    server->acceptable_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(server->acceptable_.get(), &QSocketNotifier::activated,
                     [raw = server.get()] { raw->accept(); });
    return server;
}

ControlServer::ControlServer(int descriptor, std::filesystem::path path, Handler handler)
    : descriptor_(descriptor), path_(std::move(path)), handler_(std::move(handler)) {}

ControlServer::~ControlServer() {
    if (acceptable_)
        unlink(path_.c_str());
    acceptable_.reset();
    ::close(descriptor_);
}

void ControlServer::stop() {
    if (!acceptable_)
        return;
    unlink(path_.c_str()); // Who comes now finds nobody and waits for the lock.
    while (connections_.size() < mostConnections) {
        const std::size_t before = connections_.size();
        accept();
        if (connections_.size() == before)
            break;
    }
    acceptable_.reset();
    shutdown(descriptor_, SHUT_RDWR);
    const auto open = connections_;
    for (const auto& connection : open) {
        if (!connection->handedOver())
            connection->read();
        if (!connection->handedOver())
            connection->close();
    }
}

void ControlServer::accept() {
    while (connections_.size() < mostConnections) {
        const int descriptor = accept4(descriptor_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (descriptor < 0 && errno == EINTR)
            continue;
        if (descriptor < 0 && errno != EAGAIN && acceptable_) {
            // Out of descriptors or memory. The connection still waits; asking for it at once would never
            // end.
            acceptable_->setEnabled(false);
            QTimer::singleShot(std::chrono::seconds(1), acceptable_.get(), [this] { followLimit(); });
            return;
        }
        if (descriptor < 0)
            break;
        if (isOurUser(descriptor))
            connections_.insert(std::make_shared<Connection>(descriptor, *this));
        else
            ::close(descriptor);
    }
    followLimit();
}

void ControlServer::remove(Connection* connection) {
    // Not before its own function has returned, which may be what calls this.
    for (auto at = connections_.begin(); at != connections_.end(); ++at) {
        if (at->get() == connection) {
            QTimer::singleShot(0, [dropped = *at] {});
            connections_.erase(at);
            break;
        }
    }
    followLimit();
    if (!busy())
        idle.emit();
}

void ControlServer::followLimit() {
    if (acceptable_)
        acceptable_->setEnabled(connections_.size() < mostConnections);
}

} // namespace quillo

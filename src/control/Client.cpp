#include "control/Client.h"

#include "control/SocketAddress.h"
#include "model/TodoItemJson.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <string>

namespace quillo::control {

namespace {

using Clock = std::chrono::steady_clock;

/// As many bytes as the largest list has, and some for what stands around it.
constexpr std::size_t longestAnswer = largestStoredList + (std::size_t{64} << 20);

const Error unreachable{"the running Quillo does not answer"};
const Error tooSlow{"the running Quillo does not answer; see the list for whether it was done"};
const Error goneAway{"the running Quillo stopped before it answered; see the list for whether it was done"};

class Socket {
public:
    Socket() : descriptor_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    ~Socket() {
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    int descriptor() const { return descriptor_; }

    /// False once the time is up.
    bool waitFor(short events, Clock::time_point deadline) const {
        for (;;) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
            pollfd polled{descriptor_, events, 0};
            const int ready = poll(&polled, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
            if (ready >= 0 || errno != EINTR)
                return ready > 0;
        }
    }

private:
    int descriptor_;
};

enum class Connected { Yes, NobodyListens, NotInTime };

Connected connectTo(const Socket& socket, const std::filesystem::path& path, Clock::time_point deadline) {
    const sockaddr_un address = socketAddress(path);
    for (;;) {
        if (connect(socket.descriptor(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
            return Connected::Yes;
        if (errno == EINTR)
            continue;
        if (errno != EAGAIN)
            return Connected::NobodyListens;
        // So many are waiting that the kernel takes no more; it does not tell when it does again.
        if (Clock::now() >= deadline)
            return Connected::NotInTime;
        poll(nullptr, 0, 10);
    }
}

enum class Sent { Yes, NotTaken, NotInTime };

Sent sendAll(const Socket& socket, std::string_view bytes, Clock::time_point deadline) {
    while (!bytes.empty()) {
        const ssize_t sent = send(socket.descriptor(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        else if (errno == EAGAIN) {
            if (!socket.waitFor(POLLOUT, deadline))
                return Sent::NotInTime;
        } else if (errno != EINTR)
            return Sent::NotTaken;
    }
    return Sent::Yes;
}

/// The answer's line; absent if the request was not taken: a connection that is closed with bytes nobody has
/// read is reset, and nothing is done before a request is read to its end.
std::optional<Result<std::string>> receiveLine(const Socket& socket, Clock::time_point deadline) {
    std::string line;
    std::array<char, 65536> buffer;
    while (line.size() <= longestAnswer) {
        const ssize_t count = recv(socket.descriptor(), buffer.data(), buffer.size(), 0);
        if (count > 0) {
            line.append(buffer.data(), static_cast<std::size_t>(count));
            if (line.back() == '\n')
                return line;
        } else if (count < 0 && errno == EAGAIN) {
            if (!socket.waitFor(POLLIN, deadline))
                return tooSlow;
        } else if (count < 0 && errno == ECONNRESET) {
            return std::nullopt;
        } else if (count == 0 || errno != EINTR) {
            return goneAway;
        }
    }
    return Error{"the running Quillo answers more than can be read"};
}

} // namespace

std::optional<Answer> ask(const std::filesystem::path& dataFolder, const Request& request,
                          std::chrono::milliseconds limit) {
    const Clock::time_point deadline = Clock::now() + limit;
    const std::optional<std::filesystem::path> path = socketPath(dataFolder);
    const Socket socket;
    if (!path || socket.descriptor() < 0)
        return std::nullopt;
    switch (connectTo(socket, *path, deadline)) {
    case Connected::NobodyListens:
        return std::nullopt;
    case Connected::NotInTime:
        return unreachable;
    case Connected::Yes:
        break;
    }
    switch (sendAll(socket, encode(request), deadline)) {
    case Sent::NotTaken:
        return std::nullopt;
    case Sent::NotInTime:
        return unreachable;
    case Sent::Yes:
        break;
    }
    const std::optional<Result<std::string>> line = receiveLine(socket, deadline);
    if (!line)
        return std::nullopt;
    return *line ? decodeAnswer(**line) : Answer(line->error());
}

bool isServed(const std::filesystem::path& dataFolder) {
    const std::optional<std::filesystem::path> path = socketPath(dataFolder);
    const Socket socket;
    return path && socket.descriptor() >= 0 &&
           connectTo(socket, *path, Clock::now()) != Connected::NobodyListens;
}

} // namespace quillo::control

#include "control/Client.h"

#include "control/SocketAddress.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <functional>
#include <string>
#include <thread>

using namespace quillo;
using namespace quillo::control;
using namespace std::chrono_literals;
using quillo::support::EnvironmentVariable;
using quillo::support::TemporaryFolder;

namespace {

const Request request{Add{"Buy milk"}, "UTC", "en_US"};

/// Listens in a folder and treats the first connection as told.
class Listener {
public:
    Listener(const std::filesystem::path& folder, std::function<void(int)> serve)
        : descriptor_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const sockaddr_un address = socketAddress(*socketPath(folder));
        EXPECT_EQ(bind(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(descriptor_, 1), 0);
        thread_ = std::thread([this, serve = std::move(serve)] {
            const int connection = accept(descriptor_, nullptr, nullptr);
            serve(connection);
            close(connection);
        });
    }
    ~Listener() {
        thread_.join();
        close(descriptor_);
    }

private:
    int descriptor_;
    std::thread thread_;
};

std::string receiveLine(int connection) {
    std::string line;
    std::array<char, 4096> buffer;
    while (line.empty() || line.back() != '\n') {
        const ssize_t count = recv(connection, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            return line;
        line.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return line;
}

void sendText(int connection, std::string_view text) {
    EXPECT_EQ(send(connection, text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
}

TEST(Client, AsksAndIsAnswered) {
    const TemporaryFolder folder;
    const Answer given(std::vector<NumberedItem>{{1, support::Task("Buy milk")}});
    const Listener listener(folder.path(), [&](int connection) {
        EXPECT_EQ(receiveLine(connection), encode(request));
        const std::string line = encode(given);
        sendText(connection, line.substr(0, 10)); // Answers may come in pieces.
        sendText(connection, line.substr(10));
    });
    const std::optional<Answer> answer = ask(folder.path(), request);
    ASSERT_TRUE(answer);
    ASSERT_TRUE(*answer) << answer->error().message;
    EXPECT_EQ(**answer, *given);
}

TEST(Client, FindsNobodyWithoutASocket) {
    const TemporaryFolder folder;
    EXPECT_FALSE(ask(folder.path(), request));
    EXPECT_FALSE(ask(folder.path() / "missing", request));
}

TEST(Client, FindsNobodyBehindASocketThatWasLeft) {
    const TemporaryFolder folder;
    const int left = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = socketAddress(*socketPath(folder.path()));
    ASSERT_EQ(bind(left, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(left);
    EXPECT_FALSE(ask(folder.path(), request));
}

TEST(Client, GivesUpInTime) {
    const TemporaryFolder folder;
    std::optional<Answer> answer;
    {
        const Listener listener(folder.path(), [](int connection) {
            receiveLine(connection);
            receiveLine(connection);
        });
        const auto start = std::chrono::steady_clock::now();
        answer = ask(folder.path(), request, 50ms);
        EXPECT_GE(std::chrono::steady_clock::now() - start, 50ms);
    }
    ASSERT_TRUE(answer && !*answer);
    EXPECT_EQ(answer->error().message,
              "the running Quillo does not answer; see the list for whether it was done");
}

TEST(Client, TellsWhenTheOtherGoesAway) {
    const TemporaryFolder folder;
    const Listener listener(folder.path(), [](int connection) {
        receiveLine(connection);
        sendText(connection, "{\"numbers\":[1],");
    });
    const std::optional<Answer> answer = ask(folder.path(), request);
    ASSERT_TRUE(answer && !*answer);
    EXPECT_EQ(answer->error().message,
              "the running Quillo stopped before it answered; see the list for whether it was done");
}

TEST(SocketPath, LiesBesideThePreferences) {
    EXPECT_EQ(socketPath("/home/me/.local/share/quillo"), "/home/me/.local/share/quillo/control.sock");
}

TEST(SocketPath, LiesInTheRuntimeFolderWhereTheFirstIsTooLong) {
    const EnvironmentVariable runtime("XDG_RUNTIME_DIR", "/run/user/1000");
    const std::filesystem::path folder = "/" + std::string(120, 'a');
    const auto path = socketPath(folder);
    ASSERT_TRUE(path);
    EXPECT_EQ(path->parent_path(), "/run/user/1000");
    EXPECT_EQ(socketPath(folder / ""), path) << "the same folder";
    EXPECT_NE(socketPath("/" + std::string(121, 'a')), path) << "another folder";
}

TEST(SocketPath, IsAbsentWhereBothAreTooLong) {
    const std::filesystem::path folder = "/" + std::string(120, 'a');
    {
        const EnvironmentVariable runtime("XDG_RUNTIME_DIR", folder.string());
        EXPECT_FALSE(socketPath(folder));
    }
    const EnvironmentVariable runtime("XDG_RUNTIME_DIR", "");
    EXPECT_FALSE(socketPath(folder));
}

} // namespace

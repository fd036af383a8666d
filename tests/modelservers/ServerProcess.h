/// A server of the tests, as a process.
#pragma once

#include <string>

namespace quillo::support {

/// Runs for as long as this lives.
class ServerProcess {
public:
    /// A Python program below the tests' folder, by itself that which plays language-model servers, and what
    /// it is given. It prints its port first.
    explicit ServerProcess(const std::string& program = "modelservers/chat_server.py",
                           const std::string& option = "");
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    /// The base address below which it plays that part.
    std::string address(const std::string& part) const { return "http://127.0.0.1:" + port_ + "/" + part; }

    /// What happens there next, as it says it: a JSON object. Waits for it.
    std::string nextEvent() { return readLine(); }

private:
    std::string readLine();

    int input_ = -1;
    int output_ = -1;
    int process_ = 0;
    std::string port_;
};

} // namespace quillo::support

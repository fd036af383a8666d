/// A process forked off a test, to be killed, limited or stripped of rights.
#pragma once

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <iostream>

namespace quillo::support {

class ChildProcess {
public:
    /// Runs `work` in a process of its own, which ends with what it returns.
    explicit ChildProcess(const std::function<int()>& work) : id_(fork()) {
        if (id_ == 0) {
            const int status = work();
            std::cout.flush();
            _exit(status);
        }
    }
    ~ChildProcess() { kill(); }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t id() const { return id_; }

    /// Waits for its end: its exit status, or minus the number of the signal that ended it.
    int wait() {
        int status = 0;
        waitpid(id_, &status, 0);
        id_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    void kill() {
        if (id_ > 0) {
            ::kill(id_, SIGKILL);
            wait();
        }
    }

private:
    pid_t id_;
};

/// Runs checks as a user whom file modes bind: the superuser, whom they do not, becomes nobody first, and
/// owner of `folder` and what is in it. Returns whether all of the checks held; their failures are printed.
inline bool asOrdinaryUser(const std::filesystem::path& folder, const std::function<void()>& checks) {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0) {
        EXPECT_EQ(chown(folder.c_str(), nobody, nobody), 0);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
            EXPECT_EQ(lchown(entry.path().c_str(), nobody, nobody), 0);
    }
    ChildProcess child([&] {
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0))
            return 2;
        checks();
        return testing::Test::HasFailure() ? 1 : 0;
    });
    return child.wait() == 0;
}

} // namespace quillo::support

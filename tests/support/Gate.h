/// A place where a test makes another thread wait.
#pragma once

#include <condition_variable>
#include <mutex>

namespace quillo::support {

/// Open until closed. Any thread.
class Gate {
public:
    void close() {
        const std::lock_guard lock(mutex_);
        closed_ = true;
    }
    void open() {
        const std::lock_guard lock(mutex_);
        closed_ = false;
        changed_.notify_all();
    }

    /// Returns once the gate is open.
    void pass() {
        std::unique_lock lock(mutex_);
        ++waiting_;
        changed_.notify_all();
        changed_.wait(lock, [this] { return !closed_; });
        --waiting_;
    }

    /// Returns once some thread waits at the closed gate.
    void waitForArrival() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return waiting_ > 0; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool closed_ = false;
    int waiting_ = 0;
};

} // namespace quillo::support

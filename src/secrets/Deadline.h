/// Ends what takes too long.
#pragma once

#include <gio/gio.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace quillo {

/// Cancels what was begun with its cancellable once the time is up; until this goes.
class Deadline {
public:
    explicit Deadline(std::chrono::milliseconds limit)
        : cancellable_(g_cancellable_new()), thread_([this, limit] { wait(limit); }) {}

    ~Deadline() {
        {
            const std::lock_guard lock(mutex_);
            over_ = true;
        }
        changed_.notify_one();
        thread_.join();
        g_object_unref(cancellable_);
    }

    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    GCancellable* cancellable() const { return cancellable_; }

private:
    void wait(std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex_);
        if (!changed_.wait_for(lock, limit, [this] { return over_; }))
            g_cancellable_cancel(cancellable_);
    }

    GCancellable* const cancellable_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool over_ = false;
    std::thread thread_; ///< the last: it uses the others
};

} // namespace quillo

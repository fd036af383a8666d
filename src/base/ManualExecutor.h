/// An executor whose owner says when: for a program without an event loop, and for tests.
#pragma once

#include "base/Executor.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace quillo {

class ManualExecutor : public Executor {
public:
    void post(Work task) override {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(task));
        posted_.notify_one(); // Under the lock: whoever waits may drop this right away.
    }

    /// Returns once something waits to be run: only for who knows that something will.
    void wait() {
        std::unique_lock lock(mutex_);
        posted_.wait(lock, [this] { return !waiting_.empty(); });
    }

    /// Runs on the calling thread what was posted before the call, and what that posts. Not from within a
    /// task.
    void run() {
        while (const Work task = next())
            task();
    }

private:
    Work next() {
        const std::lock_guard lock(mutex_);
        if (waiting_.empty())
            return nullptr;
        Work task = std::move(waiting_.front());
        waiting_.pop_front();
        return task;
    }

    std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<Work> waiting_;
};

} // namespace quillo

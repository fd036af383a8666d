/// An executor for tests that wait for what other threads post.
#pragma once

#include "base/Executor.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace quillo::support {

class AwaitingExecutor : public Executor {
public:
    void post(Work task) override {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(task));
        posted_.notify_one();
    }

    /// Waits until something is posted, and leaves it waiting; false where it takes too long.
    bool awaitWork(std::chrono::seconds limit = std::chrono::seconds(60)) {
        std::unique_lock lock(mutex_);
        return posted_.wait_for(lock, limit, [this] { return !waiting_.empty(); });
    }

    /// Runs on the calling thread what is posted until the condition holds; false where it takes too long.
    template <class Condition>
    bool runUntil(Condition condition, std::chrono::seconds limit = std::chrono::seconds(60)) {
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (!condition()) {
            std::unique_lock lock(mutex_);
            if (!posted_.wait_until(lock, deadline, [this] { return !waiting_.empty(); }))
                return false;
            const Work task = std::move(waiting_.front());
            waiting_.pop_front();
            lock.unlock();
            task();
        }
        return true;
    }

private:
    std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<Work> waiting_;
};

} // namespace quillo::support

#include "base/SerialQueue.h"

#include <pthread.h>
#include <sched.h>

#include <utility>

namespace quillo {

namespace {

/// SCHED_BATCH lets woken main-thread work go first. Unlike a nice value it can be taken back without
/// privileges.
void setBackgroundPriority(pthread_t thread, bool background) {
    const sched_param parameters{};
    pthread_setschedparam(thread, background ? SCHED_BATCH : SCHED_OTHER, &parameters);
}

} // namespace

SerialQueue::SerialQueue(std::string label) : label_(std::move(label)) {}

SerialQueue::~SerialQueue() {
    {
        const std::lock_guard lock(mutex_);
        if (!thread_.joinable())
            return;
        stopping_ = true;
        setBackgroundPriority(thread_.native_handle(), false);
    }
    wake_.notify_one();
    thread_.join();
}

void SerialQueue::post(Work task) {
    enqueue({std::move(task), 0});
}

void SerialQueue::postReplacing(ReplaceableKind kind, Work task) {
    enqueue({std::move(task), kind});
}

void SerialQueue::enqueue(Entry entry) {
    {
        const std::lock_guard lock(mutex_);
        if (entry.kind != 0 && !waiting_.empty() && waiting_.back().kind == entry.kind) {
            replaced_.push_back(std::exchange(waiting_.back().task, std::move(entry.task)));
            return;
        }
        waiting_.push_back(std::move(entry));
        if (!thread_.joinable()) {
            thread_ = std::thread(&SerialQueue::run, this);
            setBackgroundPriority(thread_.native_handle(), true);
        }
    }
    wake_.notify_one();
}

void SerialQueue::drain() {
    std::unique_lock lock(mutex_);
    if (!thread_.joinable())
        return;
    setBackgroundPriority(thread_.native_handle(), false);
    // A marker rather than "queue empty": tasks that others post meanwhile need not be waited for.
    bool reached = false;
    waiting_.push_back({[this, &reached] {
                            const std::lock_guard markerLock(mutex_);
                            reached = true;
                        },
                        0});
    wake_.notify_one();
    idle_.wait(lock, [&] { return reached; });
    setBackgroundPriority(thread_.native_handle(), true);
}

void SerialQueue::run() {
    const std::size_t keptByKernel = 15;
    const std::size_t skipped = label_.size() > keptByKernel ? label_.size() - keptByKernel : 0;
    pthread_setname_np(pthread_self(), label_.c_str() + skipped);

    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return stopping_ || !waiting_.empty(); });
        if (waiting_.empty())
            return;
        Work task = std::move(waiting_.front().task);
        waiting_.pop_front();
        std::vector<Work> replaced = std::exchange(replaced_, {});
        lock.unlock();
        replaced.clear();
        task();
        task = nullptr; // What it captured is let go here, not under the lock.
        lock.lock();
        idle_.notify_all();
    }
}

} // namespace quillo

#include "base/LeftAloneQueue.h"

#include <pthread.h>

#include <deque>
#include <mutex>
#include <thread>

namespace quillo {

/// What the thread works with: its own, as it may be the last that is left.
struct LeftAloneQueue::State {
    std::string label;
    std::mutex mutex;
    Executor* mainExecutor = nullptr; ///< null once nobody is to be told
    std::deque<Job> waiting;
    bool running = false;
};

LeftAloneQueue::LeftAloneQueue(std::string label, Executor& mainExecutor)
    : state_(std::make_shared<State>()) {
    state_->label = std::move(label);
    state_->mainExecutor = &mainExecutor;
}

LeftAloneQueue::~LeftAloneQueue() {
    const std::lock_guard lock(state_->mutex);
    state_->mainExecutor = nullptr;
    state_->waiting.clear();
}

void LeftAloneQueue::enqueue(Job job) {
    const std::lock_guard lock(state_->mutex);
    state_->waiting.push_back(std::move(job));
    if (std::exchange(state_->running, true))
        return;
    std::thread thread([state = state_] { runAll(state); });
    pthread_setname_np(thread.native_handle(), state_->label.c_str());
    thread.detach();
}

void LeftAloneQueue::runAll(const std::shared_ptr<State>& state) {
    std::unique_lock lock(state->mutex);
    while (!state->waiting.empty()) {
        const Job job = std::move(state->waiting.front());
        state->waiting.pop_front();
        lock.unlock();
        Work told = job();
        lock.lock();
        // Under the lock: who lets go of the queue may let go of the executor.
        if (state->mainExecutor != nullptr)
            state->mainExecutor->post(std::move(told));
    }
    state->running = false;
}

} // namespace quillo

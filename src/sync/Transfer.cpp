#include "sync/Transfer.h"

#include "base/Descriptor.h"

#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>
#include <utility>

namespace quillo {

/// What the thread works with: its own, as it may be the last that is left.
struct Transfer::State {
    std::unique_ptr<Carrier> carrier;
    std::shared_ptr<Mirror> mirror;
    Listener listener;
    Descriptor wake{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};

    std::mutex mutex;
    std::condition_variable done;
    Ticket asked = 1;
    Ticket answered = 0;
    bool stopping = false;

    void wakeUp() const {
        const std::uint64_t one = 1;
        [[maybe_unused]] const ssize_t written = write(wake.number(), &one, sizeof one);
    }
};

Transfer::Transfer(std::unique_ptr<Carrier> carrier, std::shared_ptr<Mirror> mirror, Listener listener)
    : state_(std::make_shared<State>()) {
    state_->carrier = std::move(carrier);
    state_->mirror = std::move(mirror);
    state_->listener = std::move(listener);
    std::thread thread([state = state_] { run(state); });
    pthread_setname_np(thread.native_handle(), "Quillo.Sync");
    thread.detach();
}

Transfer::~Transfer() {
    {
        const std::lock_guard lock(state_->mutex);
        state_->stopping = true;
        state_->listener = nullptr;
        state_->wakeUp();
    }
    state_->carrier->giveUp();
}

void Transfer::setShown(bool shown) {
    state_->carrier->setShown(shown);
}

Transfer::Ticket Transfer::request() {
    const std::lock_guard lock(state_->mutex);
    state_->wakeUp();
    return ++state_->asked;
}

bool Transfer::await(std::chrono::milliseconds limit) const {
    std::unique_lock lock(state_->mutex);
    return state_->done.wait_for(lock, limit,
                                 [&, asked = state_->asked] { return asked <= state_->answered; });
}

void Transfer::run(const std::shared_ptr<State>& state) {
    for (;;) {
        std::unique_lock lock(state->mutex);
        if (state->stopping)
            return;
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t emptied = read(state->wake.number(), &count, sizeof count);
        const Ticket ticket = state->asked;
        lock.unlock();
        const Exchange exchange = state->carrier->exchange(*state->mirror);
        lock.lock();
        if (state->stopping)
            return;
        // Under the lock: who lets go of the transfer may let go of what the listener works with.
        state->listener(exchange, ticket);
        state->answered = ticket;
        state->done.notify_all();
        lock.unlock();
        state->carrier->awaitNews(state->wake.number());
    }
}

} // namespace quillo

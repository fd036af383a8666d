/// Something others can listen to.
///
/// Signals belong to one thread, usually the main one: connect, emit and disconnect there.
#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace quillo {

/// A listener's hold on a signal: dropping it disconnects. It may outlive the signal.
class [[nodiscard]] Connection {
public:
    Connection() = default;
    explicit Connection(std::shared_ptr<void> hold) : hold_(std::move(hold)) {}

    void disconnect() { hold_.reset(); }
    bool connected() const { return hold_ != nullptr; }

private:
    std::shared_ptr<void> hold_;
};

template <class... Arguments>
class Signal {
public:
    using Slot = std::function<void(Arguments...)>;

    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    /// Calls `slot` at every emission until the returned connection is dropped.
    Connection connect(Slot slot) {
        auto hold = std::make_shared<Slot>(std::move(slot));
        slots_.push_back(hold);
        return Connection(std::move(hold));
    }

    /// Calls the slots in the order they were connected. A slot may connect and disconnect others (one
    /// connected meanwhile is not called this time, one disconnected no more) and may destroy the signal's
    /// owner last of all.
    void emit(Arguments... arguments) {
        slots_.remove_if([](const std::weak_ptr<Slot>& slot) { return slot.expired(); });
        const auto now = slots_;
        for (const auto& weak : now) {
            if (const auto slot = weak.lock())
                (*slot)(arguments...);
        }
    }

private:
    std::list<std::weak_ptr<Slot>> slots_;
};

} // namespace quillo

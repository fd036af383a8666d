/// The exchanges with a place, behind everybody's back.
#pragma once

#include "sync/Carrier.h"

#include <chrono>
#include <functional>
#include <memory>

namespace quillo {

/// Has a thread of its own, which exchanges at once, then whenever it is asked to or the carrier has news,
/// and sleeps meanwhile. Whatever disk or network do, nobody waits for it longer than he wants to: when this
/// goes in the midst of an exchange, that is given up; what of it cannot be (a disk that hangs) is left to
/// itself, and ends with the process at the latest.
class Transfer {
public:
    /// Counts the times that an exchange was asked for, from 1 for the one at the start.
    using Ticket = std::uint64_t;

    /// Hears of each exchange: what came of it, and the last ticket that was given out before it began.
    /// Called on the transfer's thread; never again once this is gone.
    using Listener = std::function<void(const Exchange&, Ticket)>;

    Transfer(std::unique_ptr<Carrier> carrier, std::shared_ptr<Mirror> mirror, Listener listener);

    /// Gives up what is under way.
    ~Transfer();

    /// Asks for an exchange. Any thread; returns at once.
    Ticket request();

    /// See Carrier. Any thread; returns at once.
    void setShown(bool shown);

    /// Returns when all that was asked for before is done, or the time is over: false then.
    bool await(std::chrono::milliseconds limit) const;

private:
    struct State;
    static void run(const std::shared_ptr<State>& state);

    const std::shared_ptr<State> state_;
};

} // namespace quillo

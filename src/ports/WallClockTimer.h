/// Waits for the clock on the wall to show a time.
#pragma once

#include "base/Instant.h"
#include "base/Signal.h"

namespace quillo {

/// One timer, on the clock that base/Clock.h reads: it counts on while the machine sleeps, and follows when
/// the clock is set. Belongs to the main thread. Costs nothing while it waits.
class WallClockTimer {
public:
    virtual ~WallClockTimer() = default;

    /// Fires once, when the clock shows `at` or later; what was armed before is forgotten. For an instant
    /// that has passed that is at once, though never before arm() has returned.
    virtual void arm(Instant at) = 0;

    virtual void disarm() = 0;

    /// The armed instant has come; the timer is no longer armed.
    Signal<> fired;

    /// The clock was set, forward or back, while the timer was armed; it may no longer be armed.
    Signal<> clockChanged;
};

} // namespace quillo

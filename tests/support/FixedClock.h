/// A clock that stands where a test puts it.
#pragma once

#include "base/Clock.h"

#include <atomic>

namespace quillo::support {

class FixedClock : public Clock {
public:
    explicit FixedClock(Instant now = Instant::fromUnixSeconds(1741081260.25))
        : seconds_(now.secondsSince2001) {}

    Instant now() const override { return {seconds_}; }
    void set(Instant now) { seconds_ = now.secondsSince2001; }
    void advance(double seconds) { seconds_ = seconds_ + seconds; }

private:
    std::atomic<double> seconds_;
};

} // namespace quillo::support

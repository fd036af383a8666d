/// What time it is. Passed to whoever needs it, so that tests can stand anywhere in time.
#pragma once

#include "base/Instant.h"

namespace quillo {

class Clock {
public:
    virtual ~Clock() = default;

    /// Now, with sub-second precision. Any thread.
    virtual Instant now() const = 0;
};

/// The machine's clock.
class SystemClock : public Clock {
public:
    Instant now() const override;
};

} // namespace quillo

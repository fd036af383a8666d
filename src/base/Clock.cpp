#include "base/Clock.h"

#include <chrono>

namespace quillo {

Instant SystemClock::now() const {
    const std::chrono::duration<double> sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Instant::fromUnixSeconds(sinceEpoch.count());
}

} // namespace quillo

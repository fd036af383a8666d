/// The secret of the mascot: five taps in a row.
#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

namespace quillo {

/// Counts taps that follow one another quickly. Plain data, for one thread.
class TapCounter {
public:
    using Instant = std::chrono::steady_clock::time_point;

    static constexpr std::size_t wanted = 5;
    static constexpr std::chrono::seconds memory{3};

    /// Whether this tap is the fifth of those less than three seconds old. Then the count begins anew: no tap
    /// counts twice. Instants come in order.
    bool tap(Instant now);

private:
    std::vector<Instant> taps_;
};

} // namespace quillo

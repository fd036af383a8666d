/// The ladder that completing tasks climbs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

struct Rank {
    std::string_view title;
    std::int64_t reachedAt = 0; ///< completions
};

/// Where on the ladder someone stands: for whoever words the progress line anew, in another language say.
struct RankProgress {
    Rank current;             ///< the lowest one from the start, before it is reached
    std::optional<Rank> next; ///< absent at the top
    std::int64_t missing = 0; ///< completions to the next one; 0 at the top
};

/// `completions`, those of a lifetime, are at least 0.
RankProgress rankProgress(std::int64_t completions);

/// "4 tasks completed · 1 more to reach Hopper".
std::string progressLine(std::int64_t completions);

} // namespace quillo

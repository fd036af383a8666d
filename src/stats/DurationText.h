/// How long something took or lasted, in few characters.
#pragma once

#include <cstdint>
#include <string>

namespace quillo {

/// The two largest units of a duration, cut off and not rounded: "42s", "5m 7s", "3h 12m", "2d 4h". What is
/// no number counts as 0; what is too large for 64 bits is as long as these can tell.
std::string durationText(double seconds);

/// The length of a streak: "3d".
std::string streakText(std::int64_t days);

} // namespace quillo

/// Points in time written out in UTC, for data formats and file names. What people read comes from
/// unicode/DateFormat.h.
///
/// All functions may be called from any thread. Instants outside the years 0000 to 9999 are moved to the
/// nearest one inside, as four digits are all the written forms have; one that is not a number becomes the
/// first.
#pragma once

#include "base/Instant.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

using UtcSeconds = std::chrono::sys_seconds;
using UtcMilliseconds = std::chrono::sys_time<std::chrono::milliseconds>;

/// The last whole second, or millisecond, not after the instant.
UtcSeconds floorToSecond(Instant instant);
UtcMilliseconds floorToMillisecond(Instant instant);

/// ISO 8601, for example 2026-03-05T15:00:00Z.
std::string isoTime(UtcSeconds time);

/// For file names, for example 20260305T150000.250Z: ISO 8601 without colons, and sorted by name means sorted
/// by time.
std::string fileNameTime(UtcMilliseconds time);

/// Reads what fileNameTime writes; anything else is absent.
std::optional<UtcMilliseconds> parseFileNameTime(std::string_view text);

} // namespace quillo

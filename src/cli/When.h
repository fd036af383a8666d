/// The instants that people and scripts name on the command line.
#pragma once

#include "base/Instant.h"
#include "base/Result.h"

#include <string_view>

namespace quillo::cli {

/// Reads an ISO 8601 time: "2025-03-04T09:41:00.25", in `zone` (a name of the tz database) unless it says how
/// far from UTC it is ("Z", "+01:00"). A blank may stand for the T; seconds, or the whole time, may be
/// missing. Or the seconds since 1970-01-01 00:00:00 UTC as a decimal number. Years 1 to 9999.
Result<Instant> readWhen(std::string_view text, std::string_view zone);

} // namespace quillo::cli

/// Holidays that have no fixed day of a month.
#pragma once

#include "classifier/Dates.h"

#include <string_view>

namespace quillo::classifier {

/// The coming day of the holiday that the network calls so, today included; absent where it is none.
std::optional<sys_days> comingHoliday(std::string_view kind, sys_days today);

} // namespace quillo::classifier

/// From the kind of date that a text speaks of to the date.
#pragma once

#include "base/Instant.h"
#include "parser/GeneratedTodo.h"
#include "unicode/CivilCalendar.h"

#include <optional>

namespace quillo {

/// When a text that was classified so, at `now`, is due. It may have passed: today without a time means 9:00,
/// whatever the clock shows.
///
/// Absent for the kind None, for an amount that is too small or whose weeks are too many to count, for a day
/// outside 1 ... 31, and beyond the year 9999. An hour or minute out of range counts as the nearest in it.
std::optional<Instant> resolveDate(const GeneratedTodo& todo, Instant now,
                                   const unicode::CivilCalendar& calendar);

} // namespace quillo

/// The day that a moment belongs to where the user lives, and the name under which its completions are
/// counted.
///
/// A day is a date of the Gregorian calendar (taken to have been in use always), whichever calendar the user
/// reads, so that what is stored means the same under every locale. Its year is 0000 to 9999, so that keys
/// sort by date; a moment beyond belongs to the first or the last day.
#pragma once

#include "base/Instant.h"
#include "unicode/CivilCalendar.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quillo {

using Day = std::chrono::local_days;

/// The day of `instant` in the calendar's zone. One that is not a number belongs to the first day.
Day localDay(const unicode::CivilCalendar& calendar, Instant instant);

/// Whether the zone had that day: one that changes sides of the date line skips a day.
bool hasDay(const unicode::CivilCalendar& calendar, Day day);

/// Year, month and day in ten characters: "2026-03-05". A day outside the years has no key: the empty one.
std::string dayKey(Day day);

/// Reads what dayKey writes; anything else is absent.
std::optional<Day> parseDayKey(std::string_view key);

} // namespace quillo

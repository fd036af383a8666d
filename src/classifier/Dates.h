/// Days of the Gregorian calendar, for what depends on today.
#pragma once

#include <chrono>
#include <optional>

namespace quillo::classifier {

using std::chrono::day;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::weekday;
using std::chrono::year;

/// A day of a month, or the month's last where it has not as many.
inline sys_days clamped(year inYear, month inMonth, unsigned number) {
    const std::chrono::year_month_day_last last{inYear, std::chrono::month_day_last{inMonth}};
    return number < static_cast<unsigned>(last.day()) ? sys_days(inYear / inMonth / day(number))
                                                      : sys_days(last);
}

/// The day itself, or the next of that name behind it.
inline sys_days onOrAfter(sys_days from, weekday wanted) {
    return from + (wanted - weekday(from));
}

/// Easter Sunday by the anonymous Gregorian computus (Meeus, Jones, Butcher).
inline sys_days easter(year inYear) {
    const int y = static_cast<int>(inYear);
    const int golden = y % 19;
    const int century = y / 100;
    const int rest = y % 100;
    const int epact =
        (19 * golden + century - century / 4 - (century - (century + 8) / 25 + 1) / 3 + 15) % 30;
    const int sunday = (32 + 2 * (century % 4) + 2 * (rest / 4) - epact - rest % 4) % 7;
    const int correction = (golden + 11 * epact + 22 * sunday) / 451;
    const int sum = epact + sunday - 7 * correction + 114;
    return inYear / month(static_cast<unsigned>(sum / 31)) / day(static_cast<unsigned>(sum % 31 + 1));
}

} // namespace quillo::classifier

#include "ui/row/DateTimes.h"

#include "unicode/CivilCalendar.h"

#include <cmath>

namespace quillo {

using unicode::CivilCalendar;

QDateTime toDateTime(Instant instant) {
    // A stored instant may be any number.
    const double last = CivilCalendar::latest.unixSeconds() - 1;
    const double seconds =
        std::fmax(CivilCalendar::earliest.unixSeconds(), std::fmin(instant.unixSeconds(), last));
    return QDateTime::fromMSecsSinceEpoch(std::llround(seconds * 1000));
}

std::optional<Instant> toInstant(const QDateTime& dateTime) {
    if (!dateTime.isValid())
        return std::nullopt;
    const Instant instant =
        Instant::fromUnixSeconds(static_cast<double>(dateTime.toMSecsSinceEpoch()) / 1000);
    if (instant < CivilCalendar::earliest || instant >= CivilCalendar::latest)
        return std::nullopt;
    return instant;
}

} // namespace quillo

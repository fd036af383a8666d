/// A point in time.
///
/// Counted in seconds, fractions included, since 2001-01-01 00:00:00 UTC: the form in which tasks are stored.
/// Keeping that very number makes reading and writing it back the identity; moving it to another epoch would
/// change its last bits. What day or hour an instant falls on is the calendar's business
/// (unicode/CivilCalendar.h).
#pragma once

#include <compare>

namespace quillo {

struct Instant {
    double secondsSince2001 = 0;

    /// 2001-01-01 00:00:00 UTC in seconds since 1970-01-01 00:00:00 UTC.
    static constexpr double epochSince1970 = 978307200.0;

    static constexpr Instant fromUnixSeconds(double seconds) { return Instant{seconds - epochSince1970}; }
    constexpr double unixSeconds() const { return secondsSince2001 + epochSince1970; }

    friend constexpr auto operator<=>(Instant,
                                      Instant) = default; // NOLINT(modernize-use-nullptr): not in ours
};

constexpr Instant operator+(Instant instant, double seconds) {
    return {instant.secondsSince2001 + seconds};
}

/// Seconds from `from` to `to`.
constexpr double operator-(Instant to, Instant from) {
    return to.secondsSince2001 - from.secondsSince2001;
}

} // namespace quillo

/// Days, months and clock times: what an instant is called where the user lives, and back.
///
/// Civil time = f(instant, calendar, time zone). The calendar is the one usual in the user's locale; the
/// Gregorian one is taken to have been in use always, as ISO 8601 has it.
#pragma once

#include "base/Instant.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quillo::unicode {

/// A day of a calendar. Out-of-range numbers are allowed where a function says that it rolls them over.
struct CivilDate {
    int year = 0;  ///< the calendar's continuous year count (in the Gregorian calendar the year)
    int month = 1; ///< 1 ... 12
    int day = 1;   ///< 1 ... 31

    friend bool operator==(const CivilDate&, const CivilDate&) = default;
};

/// A clock time, to the minute.
struct ClockTime {
    int hour = 0;   ///< 0 ... 23
    int minute = 0; ///< 0 ... 59

    friend bool operator==(const ClockTime&, const ClockTime&) = default;
};

struct CivilTime {
    CivilDate date;
    ClockTime time;
    int weekday = 1; ///< Sunday = 1 ... Saturday = 7
};

/// One calendar in one time zone. Belongs to one thread.
class CivilCalendar {
public:
    /// `zone` is a name of the tz database ("Europe/Berlin"); an unknown one makes no calendar. `locale` is
    /// an identifier such as "en_US"; one that is not known gets the conventions of no particular language.
    static std::optional<CivilCalendar> create(std::string_view zone, std::string_view locale);

    ~CivilCalendar();
    CivilCalendar(CivilCalendar&&) noexcept;
    CivilCalendar& operator=(CivilCalendar&&) noexcept;

    const std::string& zone() const { return zone_; }
    const std::string& locale() const { return locale_; }

    CivilTime civilTime(Instant instant) const;

    /// The instant at which the clock shows `time` on `date`. Impossible days roll over (30 February is a day
    /// in March). A clock time that a clock change skips moves forward by the gap; of one that it repeats,
    /// the later instant is meant.
    Instant instant(CivilDate date, ClockTime time) const;

    /// When the day of `instant` begins.
    Instant startOfDay(Instant instant) const { return this->instant(civilTime(instant).date, {}); }

    /// When the clock next shows another minute. Days begin with a minute, so do weeks.
    Instant nextMinute(Instant instant) const;

    /// The day with which weeks begin where the user lives: Sunday = 1 ... Saturday = 7.
    int firstWeekday() const;

    /// Whether both lie in one week, also where a year ends in it.
    bool isSameWeek(Instant one, Instant other) const;

    /// The same clock time `days` days later (earlier if negative); a skipped clock time moves forward.
    /// Absent where the result would lie beyond the year 9999.
    std::optional<Instant> addDays(Instant instant, std::int64_t days) const;

    /// The instant that many minutes later. Absent where the result would lie beyond the year 9999.
    std::optional<Instant> addMinutes(Instant instant, std::int64_t minutes) const;

    /// Seconds by which the clock is ahead of UTC at that instant.
    double offsetFromUtc(Instant instant) const;

    /// First and last instant (the latter excluded) that the calendar is meant for: the years 1 to 9999, UTC.
    static constexpr Instant earliest = Instant::fromUnixSeconds(-62135596800.0);
    static constexpr Instant latest = Instant::fromUnixSeconds(253402300800.0);

private:
    struct Implementation;
    CivilCalendar(std::unique_ptr<Implementation> implementation, std::string zone, std::string locale);

    std::unique_ptr<Implementation> implementation_;
    std::string zone_;
    std::string locale_;
};

} // namespace quillo::unicode

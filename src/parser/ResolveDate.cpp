#include "parser/ResolveDate.h"

#include <algorithm>
#include <limits>

namespace quillo {

namespace {

using unicode::CivilCalendar;
using unicode::CivilDate;
using unicode::ClockTime;

constexpr ClockTime defaultTime{9, 0};
constexpr ClockTime tonightTime{20, 0};

/// A positive amount in a smaller unit; absent where that does not fit 64 bits.
std::optional<std::int64_t> times(std::int64_t amount, std::int64_t factor) {
    if (amount > std::numeric_limits<std::int64_t>::max() / factor)
        return std::nullopt;
    return amount * factor;
}

/// One classification on its way to a date.
class Resolution {
public:
    Resolution(const GeneratedTodo& todo, Instant now, const CivilCalendar& calendar)
        : todo_(todo), now_(now), calendar_(calendar) {}

    std::optional<Instant> due() const {
        switch (todo_.kind) {
        case WhenKind::None:
            return std::nullopt;
        case WhenKind::Today:
        case WhenKind::Tonight:
            return onDayOf(now_);
        case WhenKind::Tomorrow:
            return onDayOf(daysAfter(now_, 1));
        case WhenKind::DayAfterTomorrow:
            return onDayOf(daysAfter(now_, 2));
        case WhenKind::ThisSunday:
        case WhenKind::ThisMonday:
        case WhenKind::ThisTuesday:
        case WhenKind::ThisWednesday:
        case WhenKind::ThisThursday:
        case WhenKind::ThisFriday:
        case WhenKind::ThisSaturday:
            return onDayOf(daysAfter(now_, daysTo(WhenKind::ThisSunday)));
        case WhenKind::NextSunday:
        case WhenKind::NextMonday:
        case WhenKind::NextTuesday:
        case WhenKind::NextWednesday:
        case WhenKind::NextThursday:
        case WhenKind::NextFriday:
        case WhenKind::NextSaturday: {
            // Only where the day is today does "next" make a difference.
            const int days = daysTo(WhenKind::NextSunday);
            return onDayOf(daysAfter(now_, days == 0 ? 7 : days));
        }
        case WhenKind::InMinutes:
            return afterMinutes(1);
        case WhenKind::InHours:
            return afterMinutes(60);
        case WhenKind::InDays:
            return todo_.amount < 1 ? std::nullopt : onDayOf(daysAfter(now_, todo_.amount));
        case WhenKind::InWeeks:
            return todo_.amount < 1 ? std::nullopt : weeksAfter(now_);
        case WhenKind::WeeksFromTomorrow:
            return todo_.amount < 0 ? std::nullopt : weeksAfter(daysAfter(now_, 1));
        case WhenKind::SpecificDate:
            return todo_.day < 1 || todo_.day > 31 ? std::nullopt : onDayOf(specificDate());
        case WhenKind::ThisWeekend: {
            constexpr int saturday = 7;
            return onDayOf(daysAfter(now_, saturday - calendar_.civilTime(now_).weekday));
        }
        }
        return std::nullopt;
    }

private:
    /// The same clock time that many days later; the start where that is beyond all dates.
    Instant daysAfter(Instant start, std::int64_t days) const {
        return calendar_.addDays(start, days).value_or(start);
    }

    /// The days from today to the weekday of this kind, 0 ... 6. `sunday` is the first kind of its family.
    int daysTo(WhenKind sunday) const {
        const int weekday = 1 + static_cast<int>(todo_.kind) - static_cast<int>(sunday);
        return (weekday - calendar_.civilTime(now_).weekday + 7) % 7;
    }

    std::optional<Instant> weeksAfter(Instant start) const {
        const auto days = times(todo_.amount, 7);
        return days ? onDayOf(daysAfter(start, *days)) : std::nullopt;
    }

    /// To the very second; now where that is beyond all dates.
    std::optional<Instant> afterMinutes(std::int64_t minutesEach) const {
        if (todo_.amount < 1)
            return std::nullopt;
        const auto minutes = times(todo_.amount, minutesEach);
        return minutes ? calendar_.addMinutes(now_, *minutes).value_or(now_) : now_;
    }

    /// Some instant of the day that has the number, in the month if one is named.
    Instant specificDate() const {
        const CivilDate today = calendar_.civilTime(now_).date;
        CivilDate date = today;
        date.day = static_cast<int>(todo_.day);
        if (todo_.month < 1 || todo_.month > 12) {
            // The year stays: in December a day that has passed is one of last January.
            if (date.day < today.day)
                date.month = date.month == 12 ? 1 : date.month + 1;
            return formed(date, {}).value_or(now_);
        }
        date.month = static_cast<int>(todo_.month);
        if (const auto thisYear = formed(date, {}); thisYear && *thisYear >= calendar_.startOfDay(now_))
            return *thisYear;
        ++date.year;
        return formed(date, {}).value_or(now_);
    }

    /// The time of day that is meant, on the day of `base`.
    std::optional<Instant> onDayOf(Instant base) const {
        ClockTime time = todo_.kind == WhenKind::Tonight ? tonightTime : defaultTime;
        if (todo_.hasTime)
            time = {static_cast<int>(std::clamp<std::int64_t>(todo_.hour, 0, 23)),
                    static_cast<int>(std::clamp<std::int64_t>(todo_.minute, 0, 59))};
        return formed(calendar_.civilTime(base).date, time);
    }

    /// Impossible days roll over. Absent beyond the year 9999, where the calendar ends.
    std::optional<Instant> formed(CivilDate date, ClockTime time) const {
        return calendar_.addDays(calendar_.instant(date, time), 0);
    }

    const GeneratedTodo& todo_;
    Instant now_;
    const CivilCalendar& calendar_;
};

} // namespace

std::optional<Instant> resolveDate(const GeneratedTodo& todo, Instant now, const CivilCalendar& calendar) {
    return Resolution(todo, now, calendar).due();
}

} // namespace quillo

#include "unicode/CivilCalendar.h"

#include "unicode/SystemPlace.h"
#include "unicode/Text.h"

#include <unicode/ucal.h>

#include <cmath>
#include <utility>

namespace quillo::unicode {

namespace {

/// 10000-01-01 00:00:00 as a clock shows it, in seconds from the clock's 1970-01-01 00:00:00.
constexpr double endOfClockYear9999 = 253402300800.0;

/// More days than lie between any two years we can name; keeps additions inside ICU's 32-bit amounts.
constexpr std::int64_t mostDays = 4'000'000;
constexpr std::int64_t mostMinutes = mostDays * 24 * 60;

UDate toMilliseconds(Instant instant) {
    return instant.unixSeconds() * 1000;
}
Instant fromMilliseconds(UDate milliseconds) {
    return Instant::fromUnixSeconds(milliseconds / 1000);
}

} // namespace

struct CivilCalendar::Implementation {
    UCalendar* calendar = nullptr;

    ~Implementation() { ucal_close(calendar); }

    void moveTo(Instant instant) const {
        UErrorCode status = U_ZERO_ERROR;
        ucal_setMillis(calendar, toMilliseconds(instant), &status);
    }
    int field(UCalendarDateFields which) const {
        UErrorCode status = U_ZERO_ERROR;
        return ucal_get(calendar, which, &status);
    }
    Instant instant() const {
        UErrorCode status = U_ZERO_ERROR;
        return fromMilliseconds(ucal_getMillis(calendar, &status));
    }
    /// Seconds by which the clock is ahead of UTC at the instant moved to.
    double offset() const { return (field(UCAL_ZONE_OFFSET) + field(UCAL_DST_OFFSET)) / 1000.0; }
};

CivilCalendar::CivilCalendar(std::unique_ptr<Implementation> implementation, std::string zone,
                             std::string locale)
    : implementation_(std::move(implementation)), zone_(std::move(zone)), locale_(std::move(locale)) {}

CivilCalendar::~CivilCalendar() = default;
CivilCalendar::CivilCalendar(CivilCalendar&&) noexcept = default;
CivilCalendar& CivilCalendar::operator=(CivilCalendar&&) noexcept = default;

std::optional<CivilCalendar> CivilCalendar::create(std::string_view zone, std::string_view locale) {
    const std::u16string zoneName = toUtf16(zone);
    const auto zoneLength = static_cast<std::int32_t>(zoneName.size());

    if (!isKnownTimeZone(zone))
        return std::nullopt; // ucal_open would take it for UTC.

    std::string localeName(locale);
    auto implementation = std::make_unique<Implementation>();
    UErrorCode status = U_ZERO_ERROR;
    implementation->calendar =
        ucal_open(zoneName.data(), zoneLength, localeName.c_str(), UCAL_DEFAULT, &status);
    if (U_FAILURE(status))
        return std::nullopt;
    // Other calendars have no such change, and say so; that is no failure.
    UErrorCode notGregorian = U_ZERO_ERROR;
    ucal_setGregorianChange(implementation->calendar, toMilliseconds(earliest) - 1, &notGregorian);
    return CivilCalendar(std::move(implementation), std::string(zone), std::move(localeName));
}

CivilTime CivilCalendar::civilTime(Instant instant) const {
    const Implementation& at = *implementation_;
    at.moveTo(instant);
    return {{at.field(UCAL_EXTENDED_YEAR), at.field(UCAL_MONTH) + 1, at.field(UCAL_DATE)},
            {at.field(UCAL_HOUR_OF_DAY), at.field(UCAL_MINUTE)},
            at.field(UCAL_DAY_OF_WEEK)};
}

Instant CivilCalendar::instant(CivilDate date, ClockTime time) const {
    UCalendar* calendar = implementation_->calendar;
    ucal_clear(calendar);
    ucal_set(calendar, UCAL_EXTENDED_YEAR, date.year);
    ucal_set(calendar, UCAL_MONTH, date.month - 1);
    ucal_set(calendar, UCAL_DATE, date.day);
    ucal_set(calendar, UCAL_HOUR_OF_DAY, time.hour);
    ucal_set(calendar, UCAL_MINUTE, time.minute);
    return implementation_->instant();
}

Instant CivilCalendar::nextMinute(Instant instant) const {
    // Zones were not always whole minutes apart.
    const double ahead = offsetFromUtc(instant);
    const double shown = instant.unixSeconds() + ahead;
    return Instant::fromUnixSeconds((std::floor(shown / 60) + 1) * 60 - ahead);
}

int CivilCalendar::firstWeekday() const {
    return ucal_getAttribute(implementation_->calendar, UCAL_FIRST_DAY_OF_WEEK);
}

bool CivilCalendar::isSameWeek(Instant one, Instant other) const {
    const auto week = [this](Instant instant) {
        implementation_->moveTo(instant);
        return std::pair(implementation_->field(UCAL_YEAR_WOY), implementation_->field(UCAL_WEEK_OF_YEAR));
    };
    return week(one) == week(other);
}

std::optional<Instant> CivilCalendar::addDays(Instant instant, std::int64_t days) const {
    if (days > mostDays || days < -mostDays)
        return std::nullopt;
    implementation_->moveTo(instant);
    UErrorCode status = U_ZERO_ERROR;
    ucal_add(implementation_->calendar, UCAL_DATE, static_cast<std::int32_t>(days), &status);
    const Instant result = implementation_->instant();
    if (U_FAILURE(status) || result.unixSeconds() + implementation_->offset() >= endOfClockYear9999)
        return std::nullopt;
    return result;
}

std::optional<Instant> CivilCalendar::addMinutes(Instant instant, std::int64_t minutes) const {
    if (minutes > mostMinutes || minutes < -mostMinutes)
        return std::nullopt;
    const Instant result = instant + static_cast<double>(minutes) * 60;
    if (result.unixSeconds() + offsetFromUtc(result) >= endOfClockYear9999)
        return std::nullopt;
    return result;
}

double CivilCalendar::offsetFromUtc(Instant instant) const {
    implementation_->moveTo(instant);
    return implementation_->offset();
}

} // namespace quillo::unicode

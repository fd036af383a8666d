#include "cli/When.h"

#include "unicode/CivilCalendar.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>
#include <string>

namespace quillo::cli {

namespace {

using unicode::CivilCalendar;

/// Takes pieces off the front of a text; once one does not fit, everything fails.
class Reader {
public:
    explicit Reader(std::string_view rest) : rest_(rest) {}

    bool failed() const { return failed_; }
    bool atEnd() const { return rest_.empty(); }

    /// Takes one of the characters; '\0' where none of them comes next.
    char take(std::string_view anyOf) {
        if (rest_.empty() || anyOf.find(rest_.front()) == std::string_view::npos)
            return '\0';
        const char taken = rest_.front();
        rest_.remove_prefix(1);
        return taken;
    }

    void need(std::string_view anyOf) { failed_ |= take(anyOf) == '\0'; }

    /// Exactly that many digits.
    int digits(std::size_t count) {
        int value = 0;
        for (; count > 0; --count) {
            const char digit = take("0123456789");
            failed_ |= digit == '\0';
            value = value * 10 + (digit - '0');
        }
        return value;
    }

    /// Any number of digits behind a decimal point.
    double fraction() {
        double value = 0;
        double place = 0.1;
        for (char digit = take("0123456789"); digit != '\0'; digit = take("0123456789")) {
            value += (digit - '0') * place;
            place /= 10;
        }
        return value;
    }

private:
    std::string_view rest_;
    bool failed_ = false;
};

struct IsoTime {
    unicode::CivilDate date;
    unicode::ClockTime time;
    double seconds = 0;
    std::optional<int> minutesFromUtc;
};

std::optional<IsoTime> readIsoTime(std::string_view text) {
    Reader reader(text);
    IsoTime iso;
    iso.date.year = reader.digits(4);
    reader.need("-");
    iso.date.month = reader.digits(2);
    reader.need("-");
    iso.date.day = reader.digits(2);
    if (reader.take("Tt ")) {
        iso.time.hour = reader.digits(2);
        reader.need(":");
        iso.time.minute = reader.digits(2);
        if (reader.take(":")) {
            iso.seconds = reader.digits(2);
            if (reader.take(".,"))
                iso.seconds += reader.fraction();
        }
        if (reader.take("Zz")) {
            iso.minutesFromUtc = 0;
        } else if (const char sign = reader.take("+-")) {
            const int hours = reader.digits(2);
            reader.take(":");
            const int minutes = reader.atEnd() ? 0 : reader.digits(2);
            if (hours > 23 || minutes > 59)
                return std::nullopt;
            iso.minutesFromUtc = (sign == '-' ? -1 : 1) * (hours * 60 + minutes);
        }
    }
    if (reader.failed() || !reader.atEnd())
        return std::nullopt;

    const std::chrono::year_month_day day{std::chrono::year(iso.date.year),
                                          std::chrono::month(static_cast<unsigned>(iso.date.month)),
                                          std::chrono::day(static_cast<unsigned>(iso.date.day))};
    if (!day.ok() || iso.date.year < 1 || iso.time.hour > 23 || iso.time.minute > 59 || iso.seconds >= 60)
        return std::nullopt;
    return iso;
}

Result<Instant> withinCalendar(double secondsSince1970) {
    const Instant instant = Instant::fromUnixSeconds(secondsSince1970);
    if (!(instant >= CivilCalendar::earliest && instant < CivilCalendar::latest))
        return Error{"a time must lie in the years 1 to 9999"};
    return instant;
}

} // namespace

Result<Instant> readWhen(std::string_view text, std::string_view zone) {
    double seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error == std::errc() && end == text.data() + text.size())
        return withinCalendar(seconds);

    const std::optional<IsoTime> iso = readIsoTime(text);
    if (!iso)
        return Error{"\"" + std::string(text) + "\" is no time such as 2025-03-04T09:41"};
    // ISO 8601 counts in the Gregorian calendar, whatever the user's.
    const auto calendar =
        CivilCalendar::create(iso->minutesFromUtc ? "UTC" : zone, "en_US@calendar=gregorian");
    if (!calendar)
        return Error{"unknown time zone \"" + std::string(zone) + "\""};
    return withinCalendar((calendar->instant(iso->date, iso->time) + iso->seconds).unixSeconds() -
                          iso->minutesFromUtc.value_or(0) * 60.0);
}

} // namespace quillo::cli

#include "base/UtcTime.h"

#include <cmath>
#include <cstdio>

namespace quillo {

namespace {

using namespace std::chrono;

constexpr UtcSeconds first = sys_days{year{0} / January / 1};
constexpr UtcSeconds last = sys_days{year{9999} / December / 31} + 23h + 59min + 59s;

constexpr double unixSeconds(UtcSeconds time) {
    return static_cast<double>(time.time_since_epoch().count());
}

/// Writes the fields of a time by a printf format that takes them, from the year down.
std::string write(const char* format, UtcSeconds time, int millisecond) {
    const year_month_day date{floor<days>(time)};
    const hh_mm_ss clock{time - floor<days>(time)};
    char text[64];
    std::snprintf(text, sizeof text, format, static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                  static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()), millisecond);
    return text;
}

} // namespace

UtcSeconds floorToSecond(Instant instant) {
    const double whole = std::floor(instant.secondsSince2001) + Instant::epochSince1970;
    if (!(whole >= unixSeconds(first)))
        return first;
    if (whole > unixSeconds(last))
        return last;
    return UtcSeconds{seconds{static_cast<std::int64_t>(whole)}};
}

UtcMilliseconds floorToMillisecond(Instant instant) {
    const UtcSeconds second = floorToSecond(instant);
    const double fraction = instant.secondsSince2001 - std::floor(instant.secondsSince2001);
    return second + milliseconds{fraction > 0 ? static_cast<int>(fraction * 1000) : 0};
}

std::string isoTime(UtcSeconds time) {
    return write("%04d-%02u-%02uT%02d:%02d:%02dZ", time, 0);
}

std::string fileNameTime(UtcMilliseconds time) {
    const auto second = floor<seconds>(time);
    return write("%04d%02u%02uT%02d%02d%02d.%03dZ", second, static_cast<int>((time - second).count()));
}

std::optional<UtcMilliseconds> parseFileNameTime(std::string_view text) {
    int y = 0, mon = 0, d = 0, h = 0, min = 0, s = 0, ms = 0;
    if (std::sscanf(std::string(text).c_str(), "%4d%2d%2dT%2d%2d%2d.%3dZ", &y, &mon, &d, &h, &min, &s, &ms) !=
        7)
        return std::nullopt;
    const UtcMilliseconds time =
        sys_days{year{y} / mon / d} + hours{h} + minutes{min} + seconds{s} + milliseconds{ms};
    // Whatever is out of range, missing or too much does not come out again as it went in.
    if (fileNameTime(time) != text)
        return std::nullopt;
    return time;
}

} // namespace quillo

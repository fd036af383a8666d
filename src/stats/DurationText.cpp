#include "stats/DurationText.h"

#include <algorithm>
#include <cmath>

namespace quillo {

namespace {

constexpr std::int64_t minute = 60;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

std::string number(std::int64_t count, char unit) {
    return std::to_string(count) + unit;
}

} // namespace

std::string durationText(double seconds) {
    constexpr double most = 9223372036854774784.0; // the largest double below 2 to the 63rd
    const auto whole =
        std::isnan(seconds) ? std::int64_t{0} : static_cast<std::int64_t>(std::clamp(seconds, -most, most));
    if (whole < minute)
        return number(whole, 's');
    if (whole < hour)
        return number(whole / minute, 'm') + ' ' + number(whole % minute, 's');
    if (whole < day)
        return number(whole / hour, 'h') + ' ' + number(whole % hour / minute, 'm');
    return number(whole / day, 'd') + ' ' + number(whole % day / hour, 'h');
}

std::string streakText(std::int64_t days) {
    return number(days, 'd');
}

} // namespace quillo

#include "stats/LocalDay.h"

#include "base/UtcTime.h"

#include <cstdio>

namespace quillo {

namespace {

using namespace std::chrono;

constexpr Day first{year{0} / January / 1};
constexpr Day last{year{9999} / December / 31};

Instant instantOf(UtcSeconds time) {
    return Instant::fromUnixSeconds(static_cast<double>(time.time_since_epoch().count()));
}

} // namespace

Day localDay(const unicode::CivilCalendar& calendar, Instant instant) {
    const Instant inRange = instantOf(floorToSecond(instant));
    const UtcSeconds clock = floorToSecond(inRange + calendar.offsetFromUtc(inRange));
    return Day{floor<days>(clock).time_since_epoch()};
}

bool hasDay(const unicode::CivilCalendar& calendar, Day day) {
    // Noon is far enough from the ends of the day to stay in it whichever offset is taken, if it is there.
    const Instant noonInUtc = instantOf(UtcSeconds{day.time_since_epoch() + 12h});
    return localDay(calendar, noonInUtc + -calendar.offsetFromUtc(noonInUtc)) == day;
}

std::string dayKey(Day day) {
    if (day < first || day > last)
        return {};
    const year_month_day date{day};
    std::string key = "0000-00-00";
    const auto put = [&key](std::size_t lastDigit, unsigned number) {
        for (std::size_t place = lastDigit; number > 0; --place, number /= 10)
            key[place] = static_cast<char>('0' + number % 10);
    };
    put(3, static_cast<unsigned>(static_cast<int>(date.year())));
    put(6, static_cast<unsigned>(date.month()));
    put(9, static_cast<unsigned>(date.day()));
    return key;
}

std::optional<Day> parseDayKey(std::string_view key) {
    int y = 0;
    unsigned m = 0, d = 0;
    if (std::sscanf(std::string(key).c_str(), "%4d-%2u-%2u", &y, &m, &d) != 3)
        return std::nullopt;
    const year_month_day date = std::chrono::year{y} / std::chrono::month{m} / std::chrono::day{d};
    // Whatever is written in another way does not come out again as it went in.
    if (!date.ok() || dayKey(Day{date}) != key)
        return std::nullopt;
    return Day{date};
}

} // namespace quillo

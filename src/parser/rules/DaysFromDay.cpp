/// Offsets from today or tomorrow: "2 days from tomorrow", "1 week from today".
#include "parser/rules/Families.h"

#include <limits>

namespace quillo::rules {

namespace {

using unicode::Regex;
using unicode::RegexMatch;

std::optional<DayFound> daysFrom(const RegexMatch& match, const Reference& reference) {
    const auto amount = number(match.group(1));
    if (!amount)
        return std::nullopt;
    const std::int64_t daysEach = startsWithWord(match.group(2), u"week") ? 7 : 1;
    const Instant base = isWord(match.group(3), u"tomorrow")
                             ? reference.calendar.addDays(reference.now, 1).value_or(reference.now)
                             : reference.now;
    // An amount beyond all dates means now, just as an addition that yields no date.
    if (*amount > std::numeric_limits<std::int64_t>::max() / daysEach)
        return DayFound{reference.now, {}};
    return DayFound{reference.calendar.addDays(base, *amount * daysEach).value_or(reference.now), {}};
}

constinit const Rule<DayFound> rows[] = {
    {"<amount> days|weeks from tomorrow|today",
     {uR"((?i)\b(\d+)\s+(day|days|week|weeks)\s+from\s+(tomorrow|today)\b)",
      Regex::Case::Sensitive,
      {{u"tomorrow", u"today"}, {u"from"}, true}},
     daysFrom},
};

} // namespace

const Family<DayFound> daysFromDay{"days from a day", rows};

} // namespace quillo::rules

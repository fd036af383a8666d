/// Offsets from now: "in 2 hours", "in a week", "3 days from now".
#include "parser/rules/Families.h"

#include <limits>

namespace quillo::rules {

namespace {

using unicode::Regex;
using unicode::RegexMatch;

/// The product, or the largest number there is: nothing that far away is a date anyhow.
std::int64_t times(std::int64_t amount, std::int64_t factor) {
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    return amount > largest / factor ? largest : amount * factor;
}

/// An offset of any unit keeps the clock time.
std::optional<DayFound> offset(const RegexMatch& match, const Reference& reference) {
    const std::u16string_view count = match.group(1);
    const std::u16string_view unit = match.group(2);
    const auto amount = isWord(count, u"a") || isWord(count, u"an") ? 1 : number(count);
    if (!amount)
        return std::nullopt;

    std::optional<Instant> then;
    if (startsWithWord(unit, u"min"))
        then = reference.calendar.addMinutes(reference.now, *amount);
    else if (startsWithWord(unit, u"hr") || startsWithWord(unit, u"hour"))
        then = reference.calendar.addMinutes(reference.now, times(*amount, 60));
    else if (startsWithWord(unit, u"day"))
        then = reference.calendar.addDays(reference.now, *amount);
    else
        then = reference.calendar.addDays(reference.now, times(*amount, 7));
    if (!then)
        return std::nullopt;
    return DayFound{*then, reference.calendar.civilTime(*then).time};
}

constinit const Rule<DayFound> rows[] = {
    {"in <amount> <unit>",
     {uR"((?i)\bin\s+(a|an|\d+)\s+(min|minutes?|hr|hrs|hour|hours|day|days|week|weeks)\b)",
      Regex::Case::Sensitive,
      {{u"min", u"hr", u"hour", u"day", u"week"}, {u"in"}}},
     offset},
    {"<amount> <unit> from now",
     {uR"((?i)\b(\d+)\s+(min|minutes?|hr|hrs|hour|hours|day|days|week|weeks)\s+from\s+now\b)",
      Regex::Case::Sensitive,
      {{u"from"}, {}, true}},
     offset},
};

} // namespace

const Family<DayFound> relativeOffsets{"relative offsets", rows};

} // namespace quillo::rules

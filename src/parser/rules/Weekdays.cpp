/// Weekdays: "friday", "this friday", "next friday".
#include "parser/rules/Families.h"

namespace quillo::rules {

namespace {

using unicode::Regex;
using unicode::RegexMatch;

/// One to seven days ahead. "next" and "this" make no difference: said on a Friday both mean a week later,
/// said on a Monday both mean the coming Friday.
std::optional<DayFound> weekday(const RegexMatch& match, const Reference& reference) {
    const auto target = weekdayNumber(match.group(1));
    if (!target)
        return std::nullopt;
    int days = *target - reference.calendar.civilTime(reference.now).weekday;
    if (days <= 0)
        days += 7;
    return DayFound{reference.calendar.addDays(reference.now, days).value_or(reference.now), {}};
}

constexpr Needs anyWeekday = {
    {u"sunday", u"monday", u"tuesday", u"wednesday", u"thursday", u"friday", u"saturday"}};

constinit const Rule<DayFound> rows[] = {
    {"next <weekday>",
     {uR"((?i)\bnext\s+(sunday|monday|tuesday|wednesday|thursday|friday|saturday)\b)", Regex::Case::Sensitive,
      anyWeekday},
     weekday},
    {"[this] <weekday>",
     {uR"((?i)\b(?:this\s+)?(sunday|monday|tuesday|wednesday|thursday|friday|saturday)\b)",
      Regex::Case::Sensitive, anyWeekday},
     weekday},
};

} // namespace

const Family<DayFound> weekdays{"weekdays", rows};

} // namespace quillo::rules

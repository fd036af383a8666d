/// Days by their relation to today: "day after tomorrow", "this weekend", "tomorrow", "tonight", "today".
#include "parser/rules/Families.h"

namespace quillo::rules {

namespace {

using unicode::Regex;
using unicode::RegexMatch;

template <int days>
std::optional<DayFound> daysAhead(const RegexMatch&, const Reference& reference) {
    return DayFound{reference.calendar.addDays(reference.now, days).value_or(reference.now), {}};
}

/// The coming Saturday, today on a Saturday.
std::optional<DayFound> thisWeekend(const RegexMatch&, const Reference& reference) {
    constexpr int saturday = 7;
    const int weekday = reference.calendar.civilTime(reference.now).weekday;
    return DayFound{reference.calendar.addDays(reference.now, saturday - weekday).value_or(reference.now),
                    {}};
}

std::optional<DayFound> tonight(const RegexMatch&, const Reference& reference) {
    return DayFound{reference.now, {}, true};
}

constinit const Rule<DayFound> rows[] = {
    {"day after tomorrow",
     {uR"(\bday\s+after\s+tomorrow\b)", Regex::Case::Insensitive, {{u"tomorrow"}, {u"day"}}},
     daysAhead<2>},
    {"this weekend", {uR"(\bthis\s+weekend\b)", Regex::Case::Insensitive, {{u"weekend"}}}, thisWeekend},
    {"tomorrow", {uR"(\btomorrow\b)", Regex::Case::Insensitive, {{u"tomorrow"}}}, daysAhead<1>},
    {"tonight", {uR"(\btonight\b)", Regex::Case::Insensitive, {{u"tonight"}}}, tonight},
    {"today", {uR"(\btoday\b)", Regex::Case::Insensitive, {{u"today"}}}, daysAhead<0>},
};

} // namespace

const Family<DayFound> dayWords{"day words", rows};

} // namespace quillo::rules

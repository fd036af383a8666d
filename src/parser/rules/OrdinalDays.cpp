/// Days of the month by their number: "on the 1st", "by the 15", "the 3rd".
#include "parser/rules/Families.h"

namespace quillo::rules {

namespace {

using unicode::Regex;
using unicode::RegexMatch;

/// The next day of that number: in this month if it is still to come, today included, else in the next.
std::optional<DayFound> ordinalDay(const RegexMatch& match, const Reference& reference) {
    const auto day = number(match.group(1));
    if (!day || *day < 1 || *day > 31)
        return std::nullopt;
    const unicode::CivilDate today = reference.calendar.civilTime(reference.now).date;
    unicode::CivilDate date{today.year, today.month, static_cast<int>(*day)};
    if (date.day < today.day)
        date.month = date.month % 12 + 1;
    Instant found = reference.calendar.instant(date, {});
    if (found < reference.calendar.instant(today, {})) {
        ++date.year; // From December the next month is January of the next year.
        found = reference.calendar.instant(date, {});
    }
    return DayFound{found, {}};
}

constinit const Rule<DayFound> rows[] = {
    {"on|by|until|before|after the <day>",
     {uR"((?i)\b(?:on|by|until|before|after)\s+the\s+(\d{1,2})(st|nd|rd|th)?\b)",
      Regex::Case::Sensitive,
      {{u"the"}, {}, true}},
     ordinalDay},
    // Without a preposition the suffix is needed: "the 15 reports" is no date.
    {"the <day>st|nd|rd|th",
     {uR"((?i)\bthe\s+(\d{1,2})(st|nd|rd|th)\b)", Regex::Case::Sensitive, {{u"the"}, {}, true}},
     ordinalDay},
};

} // namespace

const Family<DayFound> ordinalDays{"ordinal days", rows};

} // namespace quillo::rules

/// Dates by the month's name: "jan 5", "march 3rd".
#include "parser/rules/Families.h"

namespace quillo::rules {

namespace {

using unicode::Regex;
using unicode::RegexMatch;

/// The next such day, today included. An impossible day (feb 30) is the day it rolls over to, and judged by
/// that.
std::optional<DayFound> monthDate(const RegexMatch& match, const Reference& reference) {
    const auto month = monthNumber(match.group(1));
    const auto day = number(match.group(2));
    if (!month || !day || *day < 1 || *day > 31)
        return std::nullopt;
    const unicode::CivilDate today = reference.calendar.civilTime(reference.now).date;
    unicode::CivilDate date{today.year, *month, static_cast<int>(*day)};
    Instant found = reference.calendar.instant(date, {});
    if (found < reference.calendar.instant(today, {})) {
        ++date.year;
        found = reference.calendar.instant(date, {});
    }
    return DayFound{found, {}};
}

constinit const Rule<DayFound> rows[] = {
    {"<month> <day>",
     {uR"((?i)\b(jan|january|feb|february|mar|march|apr|april|may|jun|june|jul|july|aug|august|sep|september|oct|october|nov|november|dec|december)\s+(\d{1,2})(st|nd|rd|th)?\b)",
      Regex::Case::Sensitive,
      {{u"jan", u"feb", u"mar", u"apr", u"may", u"jun", u"jul", u"aug", u"sep", u"oct", u"nov", u"dec"},
       {},
       true}},
     monthDate},
};

} // namespace

const Family<DayFound> monthDates{"month dates", rows};

} // namespace quillo::rules

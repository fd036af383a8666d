/// A place and a moment to understand texts at.
#pragma once

#include "parser/ParserService.h"
#include "unicode/CivilCalendar.h"
#include "unicode/DateFormat.h"
#include "unicode/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace quillo::parser_tests {

/// Tuesday, 4 March 2025, 10:00:00.25 in Berlin, unless the test says otherwise.
struct Where {
    explicit Where(unicode::CivilDate date = {2025, 3, 4}, unicode::ClockTime time = {10, 0},
                   const char* zone = "Europe/Berlin", const char* locale = "en_US")
        : calendar(*unicode::CivilCalendar::create(zone, locale)), format(zone, locale),
          parser(calendar, format), now(calendar.instant(date, time) + 0.25) {}

    unicode::CivilCalendar calendar;
    unicode::DateFormat format;
    ParserService parser;
    Instant now;
};

/// Whether the text means `expected` there: "2025-03-05 09:00 | title", "none | title" where no rule dates
/// the text, "nohint | title" where none looks at it. If not, says what it means and which rules matched.
inline testing::AssertionResult means(const Where& where, const std::string& text,
                                      const std::string& expected) {
    Trace trace;
    const Parse parse = where.parser.parse(text, where.now, &trace);
    std::string meaning = parse.hint ? "none" : "nohint";
    if (parse.task.dueDate)
        meaning = where.format.byPattern(*parse.task.dueDate, u"yyyy-MM-dd HH:mm");
    meaning += " | " + parse.task.title;
    if (meaning == expected)
        return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure() << '"' << text << "\" means " << meaning;
    for (const TraceEntry& entry : trace)
        failure << "\n  " << entry.family << ", " << entry.rule << " at " << entry.range.start << "-"
                << entry.range.end;
    return failure;
}

} // namespace quillo::parser_tests

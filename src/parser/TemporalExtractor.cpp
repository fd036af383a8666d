#include "parser/TemporalExtractor.h"

#include "parser/TitleCleaning.h"
#include "parser/rules/Families.h"

#include <vector>

namespace quillo {

namespace {

/// The families that name a day, in the order in which they are tried: the first that finds one wins.
const Family<DayFound>* const dayFamilies[] = {
    &rules::relativeOffsets, // "in 3 days" before anything that could see a day in it
    &rules::daysFromDay,     // "2 days from tomorrow" before "tomorrow"
    &rules::monthDates,      //
    &rules::ordinalDays,     //
    &rules::dayWords,        //
    &rules::weekdays,        //
};

constexpr ClockTime defaultTime{9, 0};
constexpr ClockTime tonightTime{20, 0};

} // namespace

TemporalExtractor::Result TemporalExtractor::extract(std::u16string_view text, Instant now,
                                                     Trace* trace) const {
    return extract(text, look(unicode::lower(text)), now, trace);
}

TemporalExtractor::Result TemporalExtractor::extract(std::u16string_view text, const Sightings& sightings,
                                                     Instant now, Trace* trace) const {
    const Subject subject{text, sightings, trace};
    const Reference reference{now, calendar_, rules::speaksOfEvening(subject)};
    std::vector<unicode::TextRange> understood;

    // 1. A clock time.
    std::optional<ClockTime> time;
    if (const auto phrase = understand(rules::clockTimes, subject, reference)) {
        time = phrase->found;
        understood.push_back(phrase->range);
    }
    const bool clockTimeFound = time.has_value();

    // 2. A day. An offset brings its own time along.
    std::optional<DayFound> day;
    for (const Family<DayFound>* family : dayFamilies) {
        if (const auto phrase = understand(*family, subject, reference)) {
            day = phrase->found;
            understood.push_back(phrase->range);
            break;
        }
    }
    if (!time && day)
        time = day->time;

    // 3. A part of the day stands in for the clock time that is missing.
    if (!clockTimeFound) {
        if (const auto phrase = understand(rules::periodWords, subject, reference)) {
            time = phrase->found;
            understood.push_back(phrase->range);
        } else if (day && day->tonight) {
            time = tonightTime;
        }
    }

    // 4. Day and time together. A time alone means today, even when it has passed.
    std::string title = cleanTitle(text, std::move(understood));
    if (!day && !time)
        return {std::nullopt, std::move(title), "no date"};
    const unicode::CivilDate date = calendar_.civilTime(day ? day->day : now).date;
    const Instant due = calendar_.instant(date, time.value_or(defaultTime));
    return {due, std::move(title), format_.byPattern(due, u"EEE MMM d, yyyy HH:mm")};
}

} // namespace quillo

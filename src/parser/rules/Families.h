/// The families of phrases that the rules know, one file each. TemporalExtractor.cpp says in which order they
/// count.
#pragma once

#include "parser/Rule.h"

namespace quillo::rules {

extern const Family<ClockTime> clockTimes;     ///< "noon", "at 3", "9:30 pm"
extern const Family<ClockTime> periodWords;    ///< "morning", "night"
extern const Family<DayFound> relativeOffsets; ///< "in 2 hours", "3 days from now"
extern const Family<DayFound> daysFromDay;     ///< "2 weeks from tomorrow"
extern const Family<DayFound> monthDates;      ///< "march 3rd"
extern const Family<DayFound> ordinalDays;     ///< "on the 15th"
extern const Family<DayFound> dayWords;        ///< "day after tomorrow", "tonight"
extern const Family<DayFound> weekdays;        ///< "next friday"

/// Whether the text speaks of an evening or a night: "at 9" then means 21:00.
bool speaksOfEvening(const Subject& subject);

} // namespace quillo::rules

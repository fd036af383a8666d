/// The times at which one can be reminded without picking one.
#pragma once

#include "base/Instant.h"
#include "unicode/CivilCalendar.h"

namespace quillo {

/// By the clock where the user lives.
struct ReminderChoices {
    Instant inOneHour;
    Instant inThreeHours;
    Instant tonight;         ///< 20:00; if that is not to come any more today, tomorrow
    Instant tomorrowMorning; ///< 9:00 on the next day
};

ReminderChoices reminderChoices(Instant now, const unicode::CivilCalendar& calendar);

} // namespace quillo

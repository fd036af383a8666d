#include "ui/row/ReminderChoices.h"

namespace quillo {

ReminderChoices reminderChoices(Instant now, const unicode::CivilCalendar& calendar) {
    constexpr double hour = 3600;
    constexpr unicode::ClockTime evening{20, 0};
    constexpr unicode::ClockTime morning{9, 0};
    const unicode::CivilDate today = calendar.civilTime(now).date;
    const unicode::CivilDate tomorrow{today.year, today.month, today.day + 1};
    const Instant thisEvening = calendar.instant(today, evening);
    return {now + hour, now + 3 * hour, thisEvening > now ? thisEvening : calendar.instant(tomorrow, evening),
            calendar.instant(tomorrow, morning)};
}

} // namespace quillo

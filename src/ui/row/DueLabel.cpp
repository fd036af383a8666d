#include "ui/row/DueLabel.h"

#include <QCoreApplication>

namespace quillo {

namespace {

enum class Day { today, tomorrow, thisWeek, other };

Day dayOf(Instant due, Instant now, const unicode::CivilCalendar& calendar) {
    const unicode::CivilDate dueDate = calendar.civilTime(due).date;
    const unicode::CivilDate today = calendar.civilTime(now).date;
    if (dueDate == today)
        return Day::today;
    // Counted as days, as a day may have more or less than 24 hours.
    const Instant tomorrow = calendar.instant({today.year, today.month, today.day + 1}, {});
    if (dueDate == calendar.civilTime(tomorrow).date)
        return Day::tomorrow;
    return calendar.isSameWeek(due, now) ? Day::thisWeek : Day::other;
}

std::string textOf(Instant due, Day day, const unicode::DateFormat& format) {
    switch (day) {
    case Day::today:
        return QCoreApplication::translate("Quillo", "Today, ").toStdString() + format.shortTime(due);
    case Day::tomorrow:
        return QCoreApplication::translate("Quillo", "Tomorrow, ").toStdString() + format.shortTime(due);
    case Day::thisWeek:
        return format.byPattern(due, u"EEE, h:mm a");
    case Day::other:
        return format.byPattern(due, u"MMM d, h:mm a");
    }
    return {};
}

} // namespace

DueLabel dueLabel(Instant due, Instant now, bool isDone, const unicode::CivilCalendar& calendar,
                  const unicode::DateFormat& format) {
    const Day day = dayOf(due, now, calendar);
    DueLabel label{textOf(due, day, format), "bell.fill", DueTone::later};
    if (due < now) {
        label.symbol = "exclamationmark.circle.fill";
        label.tone = DueTone::overdue;
    } else if (day == Day::today) {
        label.symbol = "clock.fill";
        label.tone = DueTone::today;
    }
    if (isDone)
        label.tone = DueTone::done;
    return label;
}

std::string_view name(DueTone tone) {
    switch (tone) {
    case DueTone::done:
        return "done";
    case DueTone::overdue:
        return "overdue";
    case DueTone::today:
        return "today";
    case DueTone::later:
        return "later";
    }
    return {};
}

} // namespace quillo

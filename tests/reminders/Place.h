/// Where and when the tests of reminders play.
#pragma once

#include "model/TodoItem.h"
#include "ports/ReminderCenter.h"
#include "reminders/TaskReminder.h"
#include "support/TodoItemBuilder.h"
#include "unicode/CivilCalendar.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>

namespace quillo {

/// For failures' sake.
inline std::ostream& operator<<(std::ostream& out, const ReminderRequest& request) {
    const CalendarMinute& at = request.at;
    return out << request.identifier << " \"" << request.content.body << "\" " << at.year << '-' << at.month
               << '-' << at.day << ' ' << at.hour << ':' << at.minute << " for "
               << request.dueDate.secondsSince2001;
}

} // namespace quillo

namespace quillo::support {

constexpr double minute = 60;
constexpr double hour = 60 * minute;

inline unicode::CivilCalendar calendarIn(const std::string& zone, const char* locale = "en_US") {
    auto calendar = unicode::CivilCalendar::create(zone, locale);
    EXPECT_TRUE(calendar) << zone;
    return *std::move(calendar);
}

/// What one notification says for several reminders.
inline std::string moreRemindersText(std::size_t count) {
    return std::to_string(count) + " more";
}

/// The open task of that number, due then, with a reminder.
inline TodoItem remindedTask(std::uint32_t number, Instant dueDate, const std::string& title = "Call mom") {
    return Task(title).id(numberedId(number)).due(dueDate).reminder(reminderIdentifier(numberedId(number)));
}

} // namespace quillo::support

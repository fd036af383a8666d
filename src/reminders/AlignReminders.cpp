#include "reminders/AlignReminders.h"

#include "reminders/TaskReminder.h"

#include <cmath>

namespace quillo {

namespace {

/// Whether the request's minute is one of this calendar. Wherever the user has gone since it was made, zones
/// are not as far apart as calendars.
bool isOfCalendar(const ReminderRequest& request, const unicode::CivilCalendar& calendar) {
    constexpr double twoDays = 2.0 * 24 * 60 * 60;
    return std::abs(startOf(request.at, calendar) - request.dueDate) < twoDays;
}

/// What the book should have for a task, given what it has for it now.
std::optional<BookedReminder> aligned(const TodoItem& task, const BookedReminder* booked,
                                      const unicode::CivilCalendar& calendar, Instant now) {
    const bool isForItsDate = booked && booked->request.dueDate == task.dueDate;
    if (isForItsDate && booked->delivered)
        return *booked;
    if (isForItsDate && isOfCalendar(booked->request, calendar)) {
        BookedReminder kept = *booked;
        kept.request.content.body = task.title;
        return kept;
    }
    const bool isToCome = *task.dueDate > now;
    if (!isForItsDate && !isToCome)
        return std::nullopt;
    std::optional<ReminderRequest> made = reminderFor(task, calendar);
    if (!made)
        return std::nullopt;
    return BookedReminder{*std::move(made)};
}

} // namespace

std::optional<std::string> reminderOf(const TodoItem& task) {
    if (task.isDone || !task.dueDate || !task.notificationID)
        return std::nullopt;
    std::string identifier = reminderIdentifier(task.id);
    if (*task.notificationID != identifier)
        return std::nullopt;
    return identifier;
}

void alignReminders(ReminderBook& book, const RemindedTasks& tasks, const unicode::CivilCalendar& calendar,
                    Instant now) {
    BookedReminders wanted;
    for (const auto& [identifier, task] : tasks) {
        if (std::optional<BookedReminder> reminder = aligned(task, book.find(identifier), calendar, now))
            wanted.emplace(identifier, *std::move(reminder));
    }
    book.replaceAll(wanted);
}

} // namespace quillo

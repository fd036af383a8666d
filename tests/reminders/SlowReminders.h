/// What the book and its delivery do, said as plainly as possible: every rule looks at everything each time.
#pragma once

#include "model/TodoItem.h"
#include "reminders/ReminderDelivery.h"
#include "reminders/TaskReminder.h"
#include "unicode/CivilCalendar.h"

#include <algorithm>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace quillo::support {

class SlowReminders {
public:
    struct Reminder {
        std::string identifier;
        std::string body;
        CalendarMinute at;
        Instant dueDate;
        bool delivered = false;
        bool failed = false;

        bool isForSameDate(const Reminder& other) const { return at == other.at && dueDate == other.dueDate; }
    };

    bool available = true;
    bool holding = false;
    std::vector<Reminder> reminders;
    std::vector<std::string> tried; ///< the body of every notification

    static Reminder reminderOf(const TodoItem& task, const unicode::CivilCalendar& calendar) {
        const unicode::CivilTime civil = calendar.civilTime(*task.dueDate);
        return {"quillo." + task.id.toString(),
                task.title,
                {civil.date.year, civil.date.month, civil.date.day, civil.time.hour, civil.time.minute},
                *task.dueDate};
    }

    void remove(const std::string& identifier) {
        std::erase_if(reminders, [&](const Reminder& reminder) { return reminder.identifier == identifier; });
    }
    void add(const Reminder& reminder) {
        remove(reminder.identifier);
        reminders.push_back(reminder);
    }

    void align(const std::vector<TodoItem>& tasks, const unicode::CivilCalendar& calendar, Instant now) {
        std::vector<Reminder> before;
        before.swap(reminders);
        for (const TodoItem& task : tasks) {
            if (task.isDone || !task.notificationID || !task.dueDate)
                continue;
            const Reminder wanted = reminderOf(task, calendar);
            const auto known = std::find_if(before.begin(), before.end(), [&](const Reminder& reminder) {
                return reminder.identifier == wanted.identifier && reminder.dueDate == wanted.dueDate;
            });
            if (known == before.end()) {
                if (wanted.dueDate > now)
                    reminders.push_back(wanted);
                continue;
            }
            if (!known->delivered && known->body != task.title) {
                known->body = task.title;
                known->failed = false;
            }
            reminders.push_back(*known);
        }
    }

    void forgetFailures() {
        for (Reminder& reminder : reminders)
            reminder.failed = false;
    }

    /// The program ends; nobody hears what becomes of what is on its way.
    void stop() {
        onTheirWay_.clear();
        forgetFailures();
    }

    /// What the timer should wait for.
    std::optional<Instant> next(const unicode::CivilCalendar& calendar) const {
        std::optional<Instant> earliest;
        for (const Reminder& reminder : reminders) {
            const Instant at = startOf(reminder.at, calendar);
            if (!reminder.delivered && !reminder.failed && !isOnItsWay(reminder) &&
                (!earliest || at < *earliest))
                earliest = at;
        }
        return earliest;
    }

    void look(const unicode::CivilCalendar& calendar, Instant now) {
        while (next(calendar) && *next(calendar) <= now) {
            deliver(calendar, now);
            if (!holding)
                answer();
        }
    }

    void answer() {
        for (; !onTheirWay_.empty(); onTheirWay_.pop_front()) {
            const Reminder& shown = onTheirWay_.front();
            for (Reminder& reminder : reminders) {
                if (reminder.identifier != shown.identifier || !reminder.isForSameDate(shown))
                    continue;
                if (available)
                    reminder.delivered = true;
                else if (reminder.body == shown.body)
                    reminder.failed = true;
            }
        }
    }

private:
    bool isOnItsWay(const Reminder& reminder) const {
        return std::any_of(onTheirWay_.begin(), onTheirWay_.end(),
                           [&](const Reminder& shown) { return shown.identifier == reminder.identifier; });
    }

    void deliver(const unicode::CivilCalendar& calendar, Instant now) {
        std::vector<Reminder> late;
        std::vector<Reminder> inTime;
        for (const Reminder& reminder : reminders) {
            const Instant at = startOf(reminder.at, calendar);
            if (!reminder.delivered && !isOnItsWay(reminder) && at <= now)
                (at + 60 <= now ? late : inTime).push_back(reminder);
        }
        const auto earlier = [&](const Reminder& left, const Reminder& right) {
            return std::pair(startOf(left.at, calendar), left.identifier) <
                   std::pair(startOf(right.at, calendar), right.identifier);
        };
        std::sort(late.begin(), late.end(), earlier);
        std::sort(inTime.begin(), inTime.end(), earlier);
        const std::size_t shared = late.size() <= 5 ? 0 : late.size() - 5;
        for (std::size_t index = shared; index < late.size(); ++index)
            tried.push_back(late[index].body);
        for (const Reminder& reminder : inTime)
            tried.push_back(reminder.body);
        if (shared > 0)
            tried.push_back(moreRemindersText(shared));
        for (const std::vector<Reminder>& group : {late, inTime})
            onTheirWay_.insert(onTheirWay_.end(), group.begin(), group.end());
    }

    std::deque<Reminder> onTheirWay_;
};

} // namespace quillo::support

/// The delivery of reminders among in-memory twins.
#pragma once

#include "reminders/Place.h"
#include "reminders/ReminderBook.h"
#include "reminders/ReminderDelivery.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/ManualWallClockTimer.h"
#include "support/RecordingPresenter.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace quillo::support {

/// In Berlin on Wednesday, 5 March 2025, at 9:00 sharp, with nothing delivering yet.
struct DeliveryWorld {
    unicode::CivilCalendar calendar = calendarIn("Europe/Berlin");
    FixedClock clock{calendar.instant({2025, 3, 5}, {9, 0})};
    InMemoryPreferences preferences;
    ManualWallClockTimer timer{clock};
    RecordingPresenter presenter;
    std::optional<ReminderBook> book{std::in_place, preferences};
    std::optional<ReminderDelivery> delivery;

    /// The program starts: what it knows is in the preferences.
    void start() {
        delivery.reset();
        book.emplace(preferences);
        delivery.emplace(
            ReminderDeliveryDependencies{*book, clock, calendar, timer, presenter, moreRemindersText});
        timer.look();
    }
    void stop() {
        delivery.reset();
        book.reset();
    }

    void request(const TodoItem& task) {
        book->add(*reminderFor(task, calendar), [](const Outcome& added) { EXPECT_TRUE(added); });
    }

    /// Time passes, and the timer fires whenever it should.
    void pass(double seconds) {
        const Instant until = clock.now() + seconds;
        timer.look();
        while (timer.armed() && *timer.armed() <= until) {
            clock.set(*timer.armed());
            timer.look();
        }
        clock.set(until);
    }
    void setClock(Instant now) {
        clock.set(now);
        timer.tellOfClockChange();
        timer.look();
    }
    void moveTo(const std::string& zone) {
        calendar = calendarIn(zone);
        delivery->calendarChanged();
        timer.look();
    }

    std::vector<std::string> bodies() const {
        std::vector<std::string> all;
        for (const RecordingPresenter::Shown& notification : presenter.shown)
            all.push_back(notification.content.body);
        return all;
    }
};

} // namespace quillo::support

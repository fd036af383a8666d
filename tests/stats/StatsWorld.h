/// The surroundings of the statistics, all in memory.
#pragma once

#include "base/NotificationCenter.h"
#include "stats/StatsStore.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/TodoItemBuilder.h"
#include "unicode/CivilCalendar.h"

#include <optional>
#include <set>
#include <string>
#include <utility>

namespace quillo::support {

inline unicode::CivilCalendar calendarIn(const std::string& zone, const char* locale = "en_US") {
    return unicode::CivilCalendar::create(zone, locale).value(); // Throws where a test names no zone.
}

/// A user in Berlin, unless told otherwise, at noon of a Wednesday in March.
struct StatsWorld {
    explicit StatsWorld(const std::string& zone = "Europe/Berlin") : calendar(calendarIn(zone)) {
        goTo({2025, 3, 5});
    }

    StatsStoreDependencies dependencies() { return {preferences, clock, calendar, notifications}; }

    /// Moves the clock to a local time.
    void goTo(unicode::CivilDate date, unicode::ClockTime time = {12, 0}) {
        clock.set(calendar.instant(date, time));
    }

    /// Moves the clock by whole days, to the same local time.
    void goDays(int days) { clock.set(calendar.addDays(clock.now(), days).value()); }

    /// Completes, now, a task made that long ago: too long for one award and too short for another.
    void complete(StatsStore& store, double durationSeconds = 3600, std::string title = "t") {
        store.recordCompletion(Task(std::move(title)).made(clock.now() + -durationSeconds), clock.now());
    }

    /// Completes one task on each of the days that many days from now, in the order given, and comes back.
    void completeOnDays(StatsStore& store, std::initializer_list<int> days) {
        const Instant now = clock.now();
        for (const int day : days) {
            goDays(day);
            complete(store);
            clock.set(now);
        }
    }

    std::string stored(std::string_view key) const {
        const std::optional<Data> data = preferences.data(key);
        return std::string(data ? data->bytes() : "nothing");
    }

    InMemoryPreferences preferences;
    FixedClock clock;
    unicode::CivilCalendar calendar;
    NotificationCenter notifications;
};

} // namespace quillo::support

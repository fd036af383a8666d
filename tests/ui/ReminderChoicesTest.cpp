#include "ui/row/ReminderChoices.h"

#include <gtest/gtest.h>

namespace quillo {
namespace {

using unicode::CivilCalendar;
using unicode::CivilDate;
using unicode::ClockTime;

struct LocalTime {
    CivilDate date;
    ClockTime time;
    friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

void PrintTo(const LocalTime& moment, std::ostream* out) {
    *out << moment.date.year << '-' << moment.date.month << '-' << moment.date.day << ' ' << moment.time.hour
         << ':' << moment.time.minute;
}

LocalTime shown(const CivilCalendar& calendar, Instant instant) {
    const auto [date, time, weekday] = calendar.civilTime(instant);
    return {date, time};
}

TEST(ReminderChoices, AreMeantByTheClockWhereTheUserLives) {
    const struct {
        const char* zone;
        LocalTime now;
        LocalTime inOneHour;
        LocalTime inThreeHours;
        LocalTime tonight;
        LocalTime tomorrowMorning;
    } rows[] = {
        // An ordinary morning, evening and night.
        {"Europe/Berlin",
         {{2025, 3, 4}, {8, 15}},
         {{2025, 3, 4}, {9, 15}},
         {{2025, 3, 4}, {11, 15}},
         {{2025, 3, 4}, {20, 0}},
         {{2025, 3, 5}, {9, 0}}},
        {"Europe/Berlin",
         {{2025, 3, 4}, {19, 59}},
         {{2025, 3, 4}, {20, 59}},
         {{2025, 3, 4}, {22, 59}},
         {{2025, 3, 4}, {20, 0}},
         {{2025, 3, 5}, {9, 0}}},
        {"Europe/Berlin",
         {{2025, 3, 4}, {20, 0}},
         {{2025, 3, 4}, {21, 0}},
         {{2025, 3, 4}, {23, 0}},
         {{2025, 3, 5}, {20, 0}},
         {{2025, 3, 5}, {9, 0}}},
        {"America/New_York",
         {{2025, 3, 4}, {21, 30}},
         {{2025, 3, 4}, {22, 30}},
         {{2025, 3, 5}, {0, 30}},
         {{2025, 3, 5}, {20, 0}},
         {{2025, 3, 5}, {9, 0}}},
        {"Asia/Kathmandu",
         {{2025, 12, 31}, {23, 30}},
         {{2026, 1, 1}, {0, 30}},
         {{2026, 1, 1}, {2, 30}},
         {{2026, 1, 1}, {20, 0}},
         {{2026, 1, 1}, {9, 0}}},
        {"Pacific/Auckland",
         {{2024, 2, 28}, {22, 0}},
         {{2024, 2, 28}, {23, 0}},
         {{2024, 2, 29}, {1, 0}},
         {{2024, 2, 29}, {20, 0}},
         {{2024, 2, 29}, {9, 0}}},
        // The clock goes forward from 2:00 to 3:00 in the night to 2025-03-30,
        {"Europe/Berlin",
         {{2025, 3, 30}, {1, 30}},
         {{2025, 3, 30}, {3, 30}},
         {{2025, 3, 30}, {5, 30}},
         {{2025, 3, 30}, {20, 0}},
         {{2025, 3, 31}, {9, 0}}},
        {"Europe/Berlin",
         {{2025, 3, 29}, {21, 30}},
         {{2025, 3, 29}, {22, 30}},
         {{2025, 3, 30}, {0, 30}},
         {{2025, 3, 30}, {20, 0}},
         {{2025, 3, 30}, {9, 0}}},
        // and back from 3:00 to 2:00 in the night to 2025-10-26.
        {"Europe/Berlin",
         {{2025, 10, 26}, {1, 30}},
         {{2025, 10, 26}, {2, 30}},
         {{2025, 10, 26}, {3, 30}},
         {{2025, 10, 26}, {20, 0}},
         {{2025, 10, 27}, {9, 0}}},
        // Samoa had no 2011-12-30.
        {"Pacific/Apia",
         {{2011, 12, 29}, {21, 30}},
         {{2011, 12, 29}, {22, 30}},
         {{2011, 12, 31}, {0, 30}},
         {{2011, 12, 31}, {20, 0}},
         {{2011, 12, 31}, {9, 0}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.zone << ' ' << testing::PrintToString(row.now));
        const CivilCalendar calendar = CivilCalendar::create(row.zone, "en_US").value();
        const Instant now = calendar.instant(row.now.date, row.now.time);
        const ReminderChoices choices = reminderChoices(now, calendar);
        EXPECT_EQ(choices.inOneHour - now, 3600);
        EXPECT_EQ(choices.inThreeHours - now, 3 * 3600);
        EXPECT_EQ(shown(calendar, choices.inOneHour), row.inOneHour);
        EXPECT_EQ(shown(calendar, choices.inThreeHours), row.inThreeHours);
        EXPECT_EQ(shown(calendar, choices.tonight), row.tonight);
        EXPECT_EQ(shown(calendar, choices.tomorrowMorning), row.tomorrowMorning);
    }
}

TEST(ReminderChoices, AreAllStillToCome) {
    const CivilCalendar calendar = CivilCalendar::create("America/Sao_Paulo", "en_US").value();
    // Through a day that began at 1:00, and the days around it.
    const Instant start = calendar.instant({2018, 11, 3}, {});
    for (int minute = 0; minute < 3 * 24 * 60; ++minute) {
        const Instant now = start + minute * 60.0 + 0.5;
        const ReminderChoices choices = reminderChoices(now, calendar);
        ASSERT_GT(choices.tonight, now);
        ASSERT_LE(choices.tonight - now, 25 * 3600);
        ASSERT_GT(choices.tomorrowMorning, now);
        ASSERT_EQ(shown(calendar, choices.tonight).time, (ClockTime{20, 0}));
        ASSERT_EQ(shown(calendar, choices.tomorrowMorning).time, (ClockTime{9, 0}));
    }
}

} // namespace
} // namespace quillo

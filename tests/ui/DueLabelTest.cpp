#include "ui/row/DueLabel.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quillo {
namespace {

using unicode::CivilCalendar;
using unicode::CivilDate;
using unicode::ClockTime;
using unicode::DateFormat;

struct Place {
    Place(const char* zone, const char* locale)
        : calendar(CivilCalendar::create(zone, locale).value()), format(zone, locale) {}

    DueLabel label(Instant due, Instant now, bool isDone = false) const {
        return dueLabel(due, now, isDone, calendar, format);
    }

    CivilCalendar calendar;
    DateFormat format;
};

struct Moment {
    CivilDate date;
    ClockTime time;

    Instant in(const Place& place) const { return place.calendar.instant(date, time); }
};

constexpr std::string_view overdueSymbol = "exclamationmark.circle.fill";
constexpr std::string_view todaySymbol = "clock.fill";
constexpr std::string_view laterSymbol = "bell.fill";

TEST(DueLabel, NamesTheDayAsTheUserWould) {
    const struct {
        const char* zone;
        const char* locale;
        Moment now;
        Moment due;
        const char* text;
    } rows[] = {
        // 2025-03-04 is a Tuesday.
        {"UTC", "en_US", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 4}, {9, 0}}, "Today, 9:00 AM"},
        {"UTC", "en_US", {{2025, 3, 4}, {0, 0}}, {{2025, 3, 4}, {23, 59}}, "Today, 11:59 PM"},
        {"UTC", "en_US", {{2025, 3, 4}, {23, 59}}, {{2025, 3, 5}, {0, 0}}, "Tomorrow, 12:00 AM"},
        {"UTC", "en_US", {{2025, 3, 4}, {0, 0}}, {{2025, 3, 5}, {23, 59}}, "Tomorrow, 11:59 PM"},
        {"UTC", "en_US", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 6}, {0, 0}}, "Thu, 12:00 AM"},
        {"UTC", "en_US", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 3}, {12, 30}}, "Mon, 12:30 PM"},
        {"America/New_York", "en_US", {{2025, 3, 4}, {22, 0}}, {{2025, 3, 5}, {9, 0}}, "Tomorrow, 9:00 AM"},
        {"Asia/Kathmandu", "en_US", {{2025, 3, 4}, {1, 0}}, {{2025, 3, 4}, {2, 0}}, "Today, 2:00 AM"},
        {"Pacific/Auckland", "en_GB", {{2025, 3, 4}, {1, 0}}, {{2025, 3, 5}, {14, 5}}, "Tomorrow, 14:05"},
        {"Europe/Berlin", "de_DE", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 4}, {15, 0}}, "Today, 15:00"},
        {"Europe/Berlin", "de_DE", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 6}, {15, 0}}, "Do., 3:00 PM"},
        {"Europe/Berlin", "de_DE", {{2025, 3, 4}, {10, 0}}, {{2025, 5, 6}, {15, 0}}, "Mai 6, 3:00 PM"},
        {"Africa/Cairo", "ar_EG", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 4}, {15, 0}}, "Today, ٣:٠٠ م"},
        {"Africa/Cairo", "ar_EG", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 6}, {15, 0}}, "الخميس, ٣:٠٠ م"},
        {"Africa/Cairo", "ar_EG", {{2025, 3, 4}, {10, 0}}, {{2025, 5, 6}, {9, 0}}, "مايو ٦, ٩:٠٠ ص"},
        // Weeks begin on Sunday in the United States, on Monday in Germany, on Saturday in Egypt.
        {"UTC", "en_US", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 2}, {0, 0}}, "Sun, 12:00 AM"},
        {"UTC", "en_US", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 1}, {23, 59}}, "Mar 1, 11:59 PM"},
        {"UTC", "en_US", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 8}, {23, 59}}, "Sat, 11:59 PM"},
        {"UTC", "en_US", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 9}, {0, 0}}, "Mar 9, 12:00 AM"},
        {"UTC", "de_DE", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 9}, {9, 0}}, "So., 9:00 AM"},
        {"UTC", "de_DE", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 10}, {9, 0}}, "März 10, 9:00 AM"},
        {"UTC", "de_DE", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 2}, {9, 0}}, "März 2, 9:00 AM"},
        {"UTC", "ar_EG", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 1}, {9, 0}}, "السبت, ٩:٠٠ ص"},
        {"UTC", "ar_EG", {{2025, 3, 4}, {10, 0}}, {{2025, 3, 8}, {9, 0}}, "مارس ٨, ٩:٠٠ ص"},
        // A week goes on when the year ends; the same week of another year is another one.
        {"UTC", "en_US", {{2024, 12, 30}, {10, 0}}, {{2025, 1, 3}, {9, 0}}, "Fri, 9:00 AM"},
        {"UTC", "de_DE", {{2025, 1, 3}, {10, 0}}, {{2024, 12, 30}, {9, 0}}, "Mo., 9:00 AM"},
        {"UTC", "en_US", {{2024, 12, 31}, {23, 59}}, {{2025, 1, 1}, {0, 0}}, "Tomorrow, 12:00 AM"},
        {"UTC", "en_US", {{2025, 3, 4}, {10, 0}}, {{2026, 3, 6}, {9, 0}}, "Mar 6, 9:00 AM"},
        {"UTC", "en_US", {{2025, 3, 4}, {10, 0}}, {{2025, 2, 4}, {9, 0}}, "Feb 4, 9:00 AM"},
        // Days of 23 and of 25 hours, and one that never was.
        {"Europe/Berlin",
         "en_US",
         {{2025, 3, 29}, {23, 30}},
         {{2025, 3, 30}, {23, 30}},
         "Tomorrow, 11:30 PM"},
        {"Europe/Berlin", "en_US", {{2025, 10, 26}, {0, 10}}, {{2025, 10, 26}, {23, 50}}, "Today, 11:50 PM"},
        {"Europe/Berlin", "en_US", {{2025, 10, 26}, {0, 10}}, {{2025, 10, 27}, {0, 5}}, "Tomorrow, 12:05 AM"},
        {"America/Sao_Paulo",
         "en_US",
         {{2018, 11, 3}, {12, 0}},
         {{2018, 11, 4}, {1, 0}},
         "Tomorrow, 1:00 AM"},
        {"Pacific/Apia", "en_US", {{2011, 12, 29}, {12, 0}}, {{2011, 12, 31}, {9, 0}}, "Tomorrow, 9:00 AM"},
    };
    for (const auto& row : rows) {
        const Place place(row.zone, row.locale);
        EXPECT_EQ(place.label(row.due.in(place), row.now.in(place)).text, row.text)
            << row.zone << ' ' << row.locale;
    }
}

TEST(DueLabel, SaysWhatIsOverdueBySymbolAndToneOnly) {
    const Place place("Europe/Berlin", "en_US");
    const Instant now = Moment{{2025, 3, 4}, {10, 0}}.in(place);
    const struct {
        Instant due;
        std::string_view symbol;
        DueTone tone;
        const char* text;
    } rows[] = {
        {Moment{{2025, 3, 4}, {9, 0}}.in(place), overdueSymbol, DueTone::overdue, "Today, 9:00 AM"},
        {now + -0.001, overdueSymbol, DueTone::overdue, "Today, 9:59 AM"},
        {now, todaySymbol, DueTone::today, "Today, 10:00 AM"},
        {now + 0.001, todaySymbol, DueTone::today, "Today, 10:00 AM"},
        {Moment{{2025, 3, 4}, {23, 59}}.in(place) + 59.999, todaySymbol, DueTone::today, "Today, 11:59 PM"},
        {Moment{{2025, 3, 5}, {0, 0}}.in(place), laterSymbol, DueTone::later, "Tomorrow, 12:00 AM"},
        {Moment{{2025, 3, 3}, {23, 59}}.in(place), overdueSymbol, DueTone::overdue, "Mon, 11:59 PM"},
        {Moment{{2024, 3, 4}, {12, 0}}.in(place), overdueSymbol, DueTone::overdue, "Mar 4, 12:00 PM"},
        {Moment{{2025, 3, 20}, {12, 0}}.in(place), laterSymbol, DueTone::later, "Mar 20, 12:00 PM"},
    };
    for (const auto& row : rows) {
        const DueLabel open = place.label(row.due, now);
        EXPECT_EQ(open.text, row.text);
        EXPECT_EQ(open.symbol, row.symbol) << row.text;
        EXPECT_EQ(open.tone, row.tone) << row.text;
        const DueLabel done = place.label(row.due, now, true);
        EXPECT_EQ(done.text, row.text);
        EXPECT_EQ(done.symbol, row.symbol) << row.text;
        EXPECT_EQ(done.tone, DueTone::done) << row.text;
    }
}

TEST(DueLabel, ChangesOnlyWhenTheClockShowsAnotherMinuteForDatesOfWholeMinutes) {
    const Place place("Europe/Berlin", "en_US");
    const Instant due = Moment{{2025, 3, 5}, {9, 0}}.in(place);
    const auto now = [&](CivilDate date, ClockTime time) { return Moment{date, time}.in(place); };
    EXPECT_EQ(place.label(due, now({2025, 3, 5}, {0, 0}) + -0.001).text, "Tomorrow, 9:00 AM");
    EXPECT_EQ(place.label(due, now({2025, 3, 5}, {0, 0})).text, "Today, 9:00 AM");
    EXPECT_EQ(place.label(due, now({2025, 3, 5}, {9, 0})).tone, DueTone::today);
    EXPECT_EQ(place.label(due, now({2025, 3, 5}, {9, 0}) + 0.001).tone, DueTone::overdue);
    EXPECT_EQ(place.label(due, now({2025, 3, 6}, {0, 0}) + -0.001).text, "Today, 9:00 AM");
    EXPECT_EQ(place.label(due, now({2025, 3, 6}, {0, 0})).text, "Wed, 9:00 AM");
    EXPECT_EQ(place.label(due, now({2025, 3, 8}, {23, 59})).text, "Wed, 9:00 AM");
    EXPECT_EQ(place.label(due, now({2025, 3, 9}, {0, 0})).text, "Mar 5, 9:00 AM");
}

TEST(DueLabel, SaysSomethingOfAnyInstant) {
    const Place place("UTC", "en_US");
    const Instant now = Moment{{2025, 3, 4}, {10, 0}}.in(place);
    constexpr double largest = std::numeric_limits<double>::max();
    for (const double seconds : {-largest, -1e12, 0.0, 1e12, 1e17, largest}) {
        const DueLabel label = place.label({seconds}, now);
        EXPECT_FALSE(label.text.empty()) << seconds;
        EXPECT_EQ(label.tone, seconds < now.secondsSince2001 ? DueTone::overdue : DueTone::later) << seconds;
    }
}

TEST(DueLabel, NamesItsTones) {
    EXPECT_EQ(name(DueTone::done), "done");
    EXPECT_EQ(name(DueTone::overdue), "overdue");
    EXPECT_EQ(name(DueTone::today), "today");
    EXPECT_EQ(name(DueTone::later), "later");
}

} // namespace
} // namespace quillo

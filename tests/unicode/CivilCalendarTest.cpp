#include "unicode/CivilCalendar.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace quillo::unicode {
namespace {

CivilCalendar calendarIn(const char* zone, const char* locale = "en_US") {
    auto calendar = CivilCalendar::create(zone, locale);
    EXPECT_TRUE(calendar) << zone;
    return std::move(*calendar);
}

double unixTime(const CivilCalendar& calendar, CivilDate date, ClockTime time) {
    return calendar.instant(date, time).unixSeconds();
}

TEST(CivilCalendar, KnowsTheZonesOfTheDatabaseOnly) {
    EXPECT_TRUE(CivilCalendar::create("Europe/Berlin", "en_US"));
    EXPECT_TRUE(CivilCalendar::create("UTC", "xx_nonsense"));
    EXPECT_FALSE(CivilCalendar::create("Europe/Atlantis", "en_US"));
    EXPECT_FALSE(CivilCalendar::create("", "en_US"));
    EXPECT_FALSE(CivilCalendar::create(std::string(10'000, 'x'), "en_US"));
}

TEST(CivilCalendar, NamesAnInstantAndBack) {
    const CivilCalendar berlin = calendarIn("Europe/Berlin");
    const CivilTime time = berlin.civilTime(Instant::fromUnixSeconds(1741161600));
    EXPECT_EQ(time.date, (CivilDate{2025, 3, 5}));
    EXPECT_EQ(time.time, (ClockTime{9, 0}));
    EXPECT_EQ(time.weekday, 4); // a Wednesday
    EXPECT_EQ(unixTime(berlin, time.date, time.time), 1741161600);
}

TEST(CivilCalendar, RollsImpossibleDaysOver) {
    const CivilCalendar utc = calendarIn("UTC");
    EXPECT_EQ(utc.civilTime(utc.instant({2025, 2, 30}, {})).date, (CivilDate{2025, 3, 2}));
    EXPECT_EQ(utc.civilTime(utc.instant({2024, 2, 30}, {})).date, (CivilDate{2024, 3, 1}));
    EXPECT_EQ(utc.civilTime(utc.instant({2025, 4, 31}, {})).date, (CivilDate{2025, 5, 1}));
}

TEST(CivilCalendar, MovesSkippedTimesForwardAndTakesTheLaterOfRepeatedOnes) {
    const CivilCalendar berlin = calendarIn("Europe/Berlin");
    // On 2025-03-30 the clock goes from 2:00 to 3:00.
    EXPECT_EQ(unixTime(berlin, {2025, 3, 30}, {2, 30}), 1743298200);
    EXPECT_EQ(berlin.civilTime(Instant::fromUnixSeconds(1743298200)).time, (ClockTime{3, 30}));
    // On 2025-10-26 it goes from 3:00 back to 2:00: 2:30 is 0:30 UTC and 1:30 UTC.
    EXPECT_EQ(unixTime(berlin, {2025, 10, 26}, {2, 30}), 1761442200);
    EXPECT_EQ(berlin.offsetFromUtc(Instant::fromUnixSeconds(1761442200)), 3600);
}

TEST(CivilCalendar, AddsDaysAcrossClockChanges) {
    const CivilCalendar berlin = calendarIn("Europe/Berlin");
    const Instant before = berlin.instant({2025, 3, 29}, {9, 0});
    const auto after = berlin.addDays(before, 1);
    ASSERT_TRUE(after);
    EXPECT_EQ(*after - before, 23 * 3600);
    EXPECT_EQ(berlin.civilTime(*after).time, (ClockTime{9, 0}));
    EXPECT_EQ(*berlin.addDays(before, 0), before);
    EXPECT_EQ(*berlin.addDays(*after, -1), before);
}

TEST(CivilCalendar, StartsTheDayAfterAClockChangeAtMidnight) {
    // In Sao Paulo 2018-11-04 began at 1:00.
    const CivilCalendar saoPaulo = calendarIn("America/Sao_Paulo");
    const Instant start = saoPaulo.startOfDay(saoPaulo.instant({2018, 11, 4}, {12, 0}));
    EXPECT_EQ(saoPaulo.civilTime(start).time, (ClockTime{1, 0}));
    EXPECT_EQ(saoPaulo.civilTime(start).date, (CivilDate{2018, 11, 4}));
}

TEST(CivilCalendar, KnowsTheNextMinute) {
    const CivilCalendar berlin = calendarIn("Europe/Berlin");
    const Instant nine = berlin.instant({2025, 3, 5}, {9, 0});
    EXPECT_EQ(berlin.nextMinute(nine), nine + 60);
    EXPECT_EQ(berlin.nextMinute(nine + 0.25), nine + 60);
    EXPECT_EQ(berlin.nextMinute(nine + 59.75), nine + 60);
    EXPECT_EQ(berlin.nextMinute(nine + -0.25), nine);
    EXPECT_EQ(berlin.nextMinute(Instant{-0.5}), Instant{0});
    // The last minute of a day, and the last one before the clock goes forward.
    EXPECT_EQ(berlin.nextMinute(berlin.instant({2025, 3, 5}, {23, 59}) + 30),
              berlin.instant({2025, 3, 6}, {0, 0}));
    EXPECT_EQ(berlin.nextMinute(berlin.instant({2025, 3, 30}, {1, 59}) + 30),
              berlin.instant({2025, 3, 30}, {3, 0}));
    // Until 1972 Liberia was 44 minutes and 30 seconds behind.
    const CivilCalendar monrovia = calendarIn("Africa/Monrovia");
    const Instant then = monrovia.instant({1971, 6, 1}, {12, 0});
    EXPECT_EQ(monrovia.nextMinute(then + 10), then + 60);
}

TEST(CivilCalendar, BeginsWeeksWhereTheUserDoes) {
    EXPECT_EQ(calendarIn("UTC", "en_US").firstWeekday(), 1);
    EXPECT_EQ(calendarIn("UTC", "de_DE").firstWeekday(), 2);
    EXPECT_EQ(calendarIn("UTC", "ar_EG").firstWeekday(), 7);
}

TEST(CivilCalendar, TellsWeeksApart) {
    const struct {
        const char* locale;
        CivilDate one;
        CivilDate other;
        bool same;
    } rows[] = {
        // 2025-03-02 was a Sunday.
        {"en_US", {2025, 3, 2}, {2025, 3, 8}, true},    {"en_US", {2025, 3, 1}, {2025, 3, 2}, false},
        {"de_DE", {2025, 3, 3}, {2025, 3, 9}, true},    {"de_DE", {2025, 3, 2}, {2025, 3, 3}, false},
        {"ar_EG", {2025, 3, 1}, {2025, 3, 7}, true},    {"ar_EG", {2025, 3, 7}, {2025, 3, 8}, false},
        {"en_US", {2024, 12, 29}, {2025, 1, 4}, true},  {"de_DE", {2024, 12, 30}, {2025, 1, 5}, true},
        {"de_DE", {2023, 12, 31}, {2024, 1, 1}, false}, {"en_US", {2025, 3, 4}, {2026, 3, 4}, false},
        {"en_US", {2024, 3, 5}, {2025, 3, 4}, false},
    };
    for (const auto& row : rows) {
        const CivilCalendar calendar = calendarIn("Europe/Berlin", row.locale);
        const Instant one = calendar.instant(row.one, {23, 59});
        const Instant other = calendar.instant(row.other, {0, 0});
        EXPECT_EQ(calendar.isSameWeek(one, other), row.same) << row.locale << ' ' << row.one.day;
        EXPECT_EQ(calendar.isSameWeek(other, one), row.same) << row.locale << ' ' << row.one.day;
    }
}

TEST(CivilCalendar, EndsWithTheYear9999) {
    const CivilCalendar kathmandu = calendarIn("Asia/Kathmandu");
    const Instant lastMinute = kathmandu.instant({9999, 12, 31}, {23, 59});
    EXPECT_TRUE(kathmandu.addMinutes(lastMinute, 0));
    EXPECT_FALSE(kathmandu.addMinutes(lastMinute, 1));
    const Instant dayBefore = kathmandu.instant({9999, 12, 30}, {23, 59});
    EXPECT_EQ(kathmandu.addDays(dayBefore, 1), lastMinute);
    EXPECT_FALSE(kathmandu.addDays(dayBefore, 2));
    for (const std::int64_t huge :
         {std::int64_t{5'000'000}, std::int64_t{1} << 31, std::int64_t{1} << 62,
          std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_FALSE(kathmandu.addDays(dayBefore, huge)) << huge;
        EXPECT_FALSE(kathmandu.addMinutes(dayBefore, huge) && huge > 0) << huge;
    }
}

TEST(CivilCalendar, CountsYearsAsTheUsersCalendarDoesButContinuously) {
    const CivilCalendar bangkok = calendarIn("Asia/Bangkok", "th_TH");
    const Instant instant = Instant::fromUnixSeconds(1741161600);
    const CivilTime time = bangkok.civilTime(instant);
    EXPECT_EQ(bangkok.instant(time.date, time.time), instant);
    CivilDate nextYear = time.date;
    ++nextYear.year;
    EXPECT_EQ(bangkok.instant(nextYear, time.time) - instant, 365 * 86400);
}

} // namespace
} // namespace quillo::unicode

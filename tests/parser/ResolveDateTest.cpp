#include "parser/ResolveDate.h"

#include "parser/Where.h"

#include <rapidcheck/gtest.h>

#include <limits>
#include <string>

namespace quillo::parser_tests {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

/// Classifications, each by the numbers that matter to its kind.
GeneratedTodo kind(WhenKind kind) {
    return {.kind = kind, .title = {}};
}
GeneratedTodo counted(WhenKind kind, std::int64_t amount) {
    return {.kind = kind, .amount = amount, .title = {}};
}
GeneratedTodo date(std::int64_t month, std::int64_t day) {
    return {.kind = WhenKind::SpecificDate, .month = month, .day = day, .title = {}};
}
GeneratedTodo at(std::int64_t hour, std::int64_t minute, GeneratedTodo todo) {
    todo.hasTime = true;
    todo.hour = hour;
    todo.minute = minute;
    return todo;
}

std::string shown(const Where& where, std::optional<Instant> instant) {
    return instant ? where.format.byPattern(*instant, u"yyyy-MM-dd HH:mm") : "absent";
}

/// What the clock shows when the classified text is due.
std::string due(const Where& where, const GeneratedTodo& todo) {
    return shown(where, resolveDate(todo, where.now, where.calendar));
}

/// Wednesday, 5 March 2025, a quarter of a second past ten.
const Where& wednesday() {
    static const Where where({2025, 3, 5});
    return where;
}

TEST(ResolveDate, KnowsEveryKind) {
    const struct {
        GeneratedTodo todo;
        const char* due;
    } rows[] = {
        {kind(WhenKind::None), "absent"},
        {kind(WhenKind::Today), "2025-03-05 09:00"},
        {kind(WhenKind::Tonight), "2025-03-05 20:00"},
        {kind(WhenKind::Tomorrow), "2025-03-06 09:00"},
        {kind(WhenKind::DayAfterTomorrow), "2025-03-07 09:00"},
        {kind(WhenKind::ThisSunday), "2025-03-09 09:00"},
        {kind(WhenKind::ThisMonday), "2025-03-10 09:00"},
        {kind(WhenKind::ThisTuesday), "2025-03-11 09:00"},
        {kind(WhenKind::ThisWednesday), "2025-03-05 09:00"},
        {kind(WhenKind::ThisThursday), "2025-03-06 09:00"},
        {kind(WhenKind::ThisFriday), "2025-03-07 09:00"},
        {kind(WhenKind::ThisSaturday), "2025-03-08 09:00"},
        {kind(WhenKind::NextSunday), "2025-03-09 09:00"},
        {kind(WhenKind::NextMonday), "2025-03-10 09:00"},
        {kind(WhenKind::NextTuesday), "2025-03-11 09:00"},
        {kind(WhenKind::NextWednesday), "2025-03-12 09:00"},
        {kind(WhenKind::NextThursday), "2025-03-06 09:00"},
        {kind(WhenKind::NextFriday), "2025-03-07 09:00"},
        {kind(WhenKind::NextSaturday), "2025-03-08 09:00"},
        {counted(WhenKind::InMinutes, 10), "2025-03-05 10:10"},
        {counted(WhenKind::InHours, 2), "2025-03-05 12:00"},
        {counted(WhenKind::InDays, 3), "2025-03-08 09:00"},
        {counted(WhenKind::InWeeks, 2), "2025-03-19 09:00"},
        {counted(WhenKind::WeeksFromTomorrow, 2), "2025-03-20 09:00"},
        {date(3, 15), "2025-03-15 09:00"},
        {kind(WhenKind::ThisWeekend), "2025-03-08 09:00"},
    };
    static_assert(std::size(rows) == 26);
    for (const auto& [todo, expected] : rows)
        EXPECT_EQ(due(wednesday(), todo), expected) << rawValueOf(todo.kind);
}

TEST(ResolveDate, GivesEachKindOfDayTheTimeThatIsNamed) {
    const struct {
        GeneratedTodo todo;
        const char* due;
    } rows[] = {
        {kind(WhenKind::None), "absent"},
        {kind(WhenKind::Today), "2025-03-05 07:05"},
        {kind(WhenKind::Tonight), "2025-03-05 07:05"},
        {kind(WhenKind::DayAfterTomorrow), "2025-03-07 07:05"},
        {kind(WhenKind::ThisSunday), "2025-03-09 07:05"},
        {kind(WhenKind::NextWednesday), "2025-03-12 07:05"},
        {counted(WhenKind::InDays, 3), "2025-03-08 07:05"},
        {counted(WhenKind::InWeeks, 2), "2025-03-19 07:05"},
        {counted(WhenKind::WeeksFromTomorrow, 0), "2025-03-06 07:05"},
        {date(3, 1), "2026-03-01 07:05"},
        {date(0, 5), "2025-03-05 07:05"},
        {kind(WhenKind::ThisWeekend), "2025-03-08 07:05"},
    };
    for (const auto& [todo, expected] : rows)
        EXPECT_EQ(due(wednesday(), at(7, 5, todo)), expected) << rawValueOf(todo.kind);
}

TEST(ResolveDate, IsDueAtAFullMinute) {
    const auto due = resolveDate(kind(WhenKind::Tomorrow), wednesday().now, wednesday().calendar);
    ASSERT_TRUE(due);
    EXPECT_EQ(*due, wednesday().calendar.instant({2025, 3, 6}, {9, 0}));
}

TEST(ResolveDate, IgnoresTimesThatAreNotNamed) {
    GeneratedTodo todo = at(23, 45, kind(WhenKind::Today));
    todo.hasTime = false;
    EXPECT_EQ(due(wednesday(), todo), "2025-03-05 09:00");
}

TEST(ResolveDate, TakesTheNearestOfImpossibleTimes) {
    const GeneratedTodo today = kind(WhenKind::Today);
    EXPECT_EQ(due(wednesday(), at(27, 75, today)), "2025-03-05 23:59");
    EXPECT_EQ(due(wednesday(), at(24, 60, today)), "2025-03-05 23:59");
    EXPECT_EQ(due(wednesday(), at(23, 59, today)), "2025-03-05 23:59");
    EXPECT_EQ(due(wednesday(), at(-1, -1, today)), "2025-03-05 00:00");
    EXPECT_EQ(due(wednesday(), at(0, 0, today)), "2025-03-05 00:00");
    EXPECT_EQ(due(wednesday(), at(largest, largest, today)), "2025-03-05 23:59");
    EXPECT_EQ(due(wednesday(), at(smallest, smallest, today)), "2025-03-05 00:00");
    EXPECT_EQ(due(wednesday(), at(std::int64_t{1} << 32, -(std::int64_t{1} << 32), today)),
              "2025-03-05 23:00");
}

TEST(ResolveDate, MayHavePassed) {
    EXPECT_EQ(due(wednesday(), kind(WhenKind::Today)), "2025-03-05 09:00");
    EXPECT_EQ(due(wednesday(), at(8, 0, kind(WhenKind::Today))), "2025-03-05 08:00");
    EXPECT_EQ(due(Where({2025, 3, 5}, {22, 0}), kind(WhenKind::Tonight)), "2025-03-05 20:00");
}

/// Looks at day after day.
std::string nextDay(const Where& where, int firstDaysAhead, int weekday) {
    unicode::CivilDate day = where.calendar.civilTime(where.now).date;
    day.day += firstDaysAhead;
    while (where.calendar.civilTime(where.calendar.instant(day, {12, 0})).weekday != weekday)
        ++day.day;
    return shown(where, where.calendar.instant(day, {9, 0}));
}

TEST(ResolveDate, FindsEveryWeekdayFromEveryWeekday) {
    for (int today = 1; today <= 7; ++today) {
        // Across a clock change, and across the end of a year.
        for (const unicode::CivilDate from :
             {unicode::CivilDate{2025, 3, 25 + today}, {2025, 12, 24 + today}}) {
            const Where where(from);
            for (int weekday = 1; weekday <= 7; ++weekday) {
                const auto thisDay =
                    static_cast<WhenKind>(static_cast<int>(WhenKind::ThisSunday) + weekday - 1);
                const auto nextOne =
                    static_cast<WhenKind>(static_cast<int>(WhenKind::NextSunday) + weekday - 1);
                EXPECT_EQ(due(where, kind(thisDay)), nextDay(where, 0, weekday)) << rawValueOf(thisDay);
                EXPECT_EQ(due(where, kind(nextOne)), nextDay(where, 1, weekday)) << rawValueOf(nextOne);
            }
            constexpr int saturday = 7;
            EXPECT_EQ(due(where, kind(WhenKind::ThisWeekend)), nextDay(where, 0, saturday));
        }
    }
}

TEST(ResolveDate, TakesTheComingSaturdayForTheWeekend) {
    EXPECT_EQ(due(Where({2025, 3, 9}), kind(WhenKind::ThisWeekend)), "2025-03-15 09:00"); // on a Sunday
    EXPECT_EQ(due(Where({2025, 3, 8}), kind(WhenKind::ThisWeekend)), "2025-03-08 09:00"); // on a Saturday
}

TEST(ResolveDate, CountsMinutesAndHoursToTheVerySecond) {
    const Where& where = wednesday();
    const auto due = [&](const GeneratedTodo& todo) { return resolveDate(todo, where.now, where.calendar); };
    EXPECT_EQ(due(counted(WhenKind::InMinutes, 10)), where.now + 600);
    EXPECT_EQ(due(counted(WhenKind::InMinutes, 1)), where.now + 60);
    EXPECT_EQ(due(counted(WhenKind::InHours, 2)), where.now + 7200);
    EXPECT_EQ(due(at(7, 30, counted(WhenKind::InMinutes, 10))), where.now + 600);
    EXPECT_EQ(due(at(7, 30, counted(WhenKind::InHours, 2))), where.now + 7200);
    const Instant odd = where.now + 0.123456;
    EXPECT_EQ(resolveDate(counted(WhenKind::InMinutes, 10), odd, where.calendar), odd + 600);
}

TEST(ResolveDate, IsAbsentForTooSmallAnAmount) {
    for (const WhenKind each :
         {WhenKind::InMinutes, WhenKind::InHours, WhenKind::InDays, WhenKind::InWeeks}) {
        for (const std::int64_t amount : {std::int64_t{0}, std::int64_t{-1}, smallest, smallest / 7 - 1})
            EXPECT_EQ(due(wednesday(), counted(each, amount)), "absent") << rawValueOf(each) << amount;
        EXPECT_NE(due(wednesday(), counted(each, 1)), "absent") << rawValueOf(each);
    }
    for (const std::int64_t amount : {std::int64_t{-1}, smallest, smallest / 7 - 1})
        EXPECT_EQ(due(wednesday(), counted(WhenKind::WeeksFromTomorrow, amount)), "absent") << amount;
    EXPECT_EQ(due(wednesday(), counted(WhenKind::WeeksFromTomorrow, 0)), "2025-03-06 09:00");
}

TEST(ResolveDate, LeavesTheStartWhereAnAmountLeadsBeyondAllDates) {
    const Where& where = wednesday();
    for (const std::int64_t amount :
         {std::int64_t{5'000'000'000'000}, largest / 60, largest / 60 + 1, largest}) {
        EXPECT_EQ(resolveDate(counted(WhenKind::InMinutes, amount), where.now, where.calendar), where.now);
        EXPECT_EQ(resolveDate(counted(WhenKind::InHours, amount), where.now, where.calendar), where.now);
        EXPECT_EQ(due(where, counted(WhenKind::InDays, amount)), "2025-03-05 09:00");
    }
    // 9999-12-31 is 2912744 days away.
    EXPECT_EQ(due(where, counted(WhenKind::InDays, 2'912'744)), "9999-12-31 09:00");
    EXPECT_EQ(due(where, counted(WhenKind::InDays, 2'912'745)), "2025-03-05 09:00");
    EXPECT_EQ(due(where, counted(WhenKind::InWeeks, 416'106)), "9999-12-29 09:00");
    EXPECT_EQ(due(where, counted(WhenKind::InWeeks, 416'107)), "2025-03-05 09:00");
    EXPECT_EQ(due(where, counted(WhenKind::WeeksFromTomorrow, 416'106)), "9999-12-30 09:00");
    EXPECT_EQ(due(where, counted(WhenKind::WeeksFromTomorrow, 416'107)), "2025-03-06 09:00");
    EXPECT_EQ(due(where, counted(WhenKind::InWeeks, largest / 7)), "2025-03-05 09:00");
    EXPECT_EQ(due(where, counted(WhenKind::WeeksFromTomorrow, largest / 7)), "2025-03-06 09:00");
}

TEST(ResolveDate, IsAbsentForWeeksWhoseDaysCannotBeCounted) {
    for (const WhenKind each : {WhenKind::InWeeks, WhenKind::WeeksFromTomorrow}) {
        EXPECT_EQ(due(wednesday(), counted(each, largest / 7 + 1)), "absent");
        EXPECT_EQ(due(wednesday(), counted(each, largest)), "absent");
    }
}

TEST(ResolveDate, EndsWithTheYear9999) {
    const Where lastDay({9999, 12, 31});
    EXPECT_EQ(due(lastDay, kind(WhenKind::Today)), "9999-12-31 09:00");
    EXPECT_EQ(due(lastDay, kind(WhenKind::Tomorrow)), "9999-12-31 09:00");
    EXPECT_EQ(due(lastDay, counted(WhenKind::WeeksFromTomorrow, 1)), "9999-12-31 09:00");
    EXPECT_EQ(due(lastDay, date(12, 30)), "9999-12-31 09:00"); // there is no such day any more
    EXPECT_EQ(due(lastDay, date(0, 30)), "9999-01-30 09:00");
    EXPECT_EQ(due(lastDay, counted(WhenKind::InMinutes, 13 * 60 + 59)), "9999-12-31 23:59");
    EXPECT_EQ(due(lastDay, counted(WhenKind::InMinutes, 14 * 60)), "9999-12-31 10:00");
    EXPECT_EQ(due(lastDay, counted(WhenKind::InHours, 14)), "9999-12-31 10:00");
    const Where after({10000, 1, 1}, {0, 10});
    EXPECT_EQ(due(after, kind(WhenKind::Today)), "absent");
    EXPECT_EQ(due(after, kind(WhenKind::Tomorrow)), "absent");
    EXPECT_EQ(due(after, date(1, 1)), "absent");
    EXPECT_EQ(due(after, date(0, 1)), "absent");
}

TEST(ResolveDate, TakesTheComingOneOfAMonthsDay) {
    EXPECT_EQ(due(Where({2025, 3, 2}), date(3, 1)), "2026-03-01 09:00");
    EXPECT_EQ(due(Where({2025, 3, 1}, {0, 0}), date(3, 1)), "2025-03-01 09:00");
    EXPECT_EQ(due(Where({2025, 3, 1}, {23, 59}), date(3, 1)), "2025-03-01 09:00");
    EXPECT_EQ(due(Where({2025, 12, 31}), date(1, 1)), "2026-01-01 09:00");
    EXPECT_EQ(due(Where({2025, 12, 31}), date(12, 31)), "2025-12-31 09:00");
    EXPECT_EQ(due(Where({2025, 1, 1}), date(12, 31)), "2025-12-31 09:00");
}

TEST(ResolveDate, TakesTheComingDayOfThatNumberButNeverTheNextYear) {
    for (const std::int64_t month : {std::int64_t{0}, std::int64_t{13}, std::int64_t{-1}, largest, smallest,
                                     (std::int64_t{1} << 32) + 3}) {
        EXPECT_EQ(due(wednesday(), date(month, 5)), "2025-03-05 09:00") << month;
        EXPECT_EQ(due(wednesday(), date(month, 31)), "2025-03-31 09:00") << month;
        EXPECT_EQ(due(wednesday(), date(month, 4)), "2025-04-04 09:00") << month;
    }
    EXPECT_EQ(due(Where({2025, 11, 20}), date(0, 5)), "2025-12-05 09:00");
    EXPECT_EQ(due(Where({2025, 12, 20}), date(0, 5)), "2025-01-05 09:00");
    EXPECT_EQ(due(Where({2025, 12, 20}), date(0, 20)), "2025-12-20 09:00");
}

TEST(ResolveDate, RollsImpossibleDaysOver) {
    EXPECT_EQ(due(wednesday(), date(4, 31)), "2025-05-01 09:00");
    EXPECT_EQ(due(wednesday(), date(2, 29)), "2026-03-01 09:00");         // 1 March 2025 has passed
    EXPECT_EQ(due(Where({2025, 3, 2}), date(2, 30)), "2025-03-02 09:00"); // today
    EXPECT_EQ(due(Where({2024, 1, 31}), date(2, 29)), "2024-02-29 09:00");
    EXPECT_EQ(due(Where({2024, 2, 29}), date(2, 29)), "2024-02-29 09:00");
    EXPECT_EQ(due(Where({2024, 3, 1}), date(2, 29)), "2025-03-01 09:00");
    EXPECT_EQ(due(Where({2023, 3, 2}), date(2, 29)), "2024-02-29 09:00");
    EXPECT_EQ(due(Where({2025, 4, 10}), date(0, 31)), "2025-05-01 09:00");
    EXPECT_EQ(due(Where({2025, 1, 31}), date(0, 30)), "2025-03-02 09:00"); // the 30th of February
}

TEST(ResolveDate, IsAbsentForImpossibleNumbersOfDays) {
    for (const std::int64_t day : {std::int64_t{0}, std::int64_t{32}, std::int64_t{-1}, largest, smallest,
                                   (std::int64_t{1} << 32) + 5}) {
        EXPECT_EQ(due(wednesday(), date(3, day)), "absent") << day;
        EXPECT_EQ(due(wednesday(), date(0, day)), "absent") << day;
    }
}

TEST(ResolveDate, CountsDaysAcrossTheEndsOfMonthsAndYears) {
    EXPECT_EQ(due(Where({2025, 12, 31}, {23, 59}), kind(WhenKind::Tomorrow)), "2026-01-01 09:00");
    EXPECT_EQ(due(Where({2025, 12, 31}), kind(WhenKind::DayAfterTomorrow)), "2026-01-02 09:00");
    EXPECT_EQ(due(Where({2024, 2, 28}), kind(WhenKind::Tomorrow)), "2024-02-29 09:00");
    EXPECT_EQ(due(Where({2025, 2, 28}), kind(WhenKind::Tomorrow)), "2025-03-01 09:00");
    EXPECT_EQ(due(Where({2024, 2, 22}), counted(WhenKind::InWeeks, 1)), "2024-02-29 09:00");
    EXPECT_EQ(due(Where({2025, 12, 27}), counted(WhenKind::InDays, 5)), "2026-01-01 09:00");
}

TEST(ResolveDate, KeepsToTheClockAcrossItsChanges) {
    // In Berlin the clock goes from 2:00 to 3:00 on 30 March 2025, and from 3:00 back to 2:00 on 26 October.
    const Where beforeSummer({2025, 3, 29}, {23, 30});
    EXPECT_EQ(due(beforeSummer, kind(WhenKind::Tomorrow)), "2025-03-30 09:00");
    EXPECT_EQ(due(beforeSummer, kind(WhenKind::DayAfterTomorrow)), "2025-03-31 09:00");
    EXPECT_EQ(due(beforeSummer, at(2, 30, kind(WhenKind::Tomorrow))), "2025-03-30 03:30");
    EXPECT_EQ(due(beforeSummer, counted(WhenKind::InHours, 3)), "2025-03-30 03:30"); // two by the clock
    // Half past two, counted to a day on which there is none.
    EXPECT_EQ(due(Where({2025, 3, 29}, {2, 30}), kind(WhenKind::Tomorrow)), "2025-03-30 09:00");

    const Where beforeWinter({2025, 10, 25}, {23, 30});
    EXPECT_EQ(due(beforeWinter, counted(WhenKind::InDays, 2)), "2025-10-27 09:00");
    const auto repeated =
        resolveDate(at(2, 30, kind(WhenKind::Tomorrow)), beforeWinter.now, beforeWinter.calendar);
    ASSERT_TRUE(repeated);
    EXPECT_EQ(*repeated - beforeWinter.now, 4 * 3600 - 0.25); // the later one

    // In Sao Paulo 4 November 2018 begins at 1:00; in Havana the first hour of 3 November 2024 comes twice.
    const Where saoPaulo({2018, 11, 3}, {0, 30}, "America/Sao_Paulo");
    EXPECT_EQ(due(saoPaulo, at(0, 0, kind(WhenKind::Tomorrow))), "2018-11-04 01:00");
    EXPECT_EQ(due(Where({2018, 11, 4}, {1, 0}, "America/Sao_Paulo"), date(11, 4)), "2018-11-04 09:00");
    EXPECT_EQ(due(Where({2024, 11, 3}, {0, 30}, "America/Havana"), date(11, 3)), "2024-11-03 09:00");
}

TEST(ResolveDate, CountsInTheUsersCalendar) {
    const Where bangkok({2568, 3, 5}, {10, 0}, "Asia/Bangkok", "th_TH");
    const auto due = resolveDate(date(3, 1), bangkok.now, bangkok.calendar);
    ASSERT_TRUE(due);
    EXPECT_EQ(bangkok.calendar.civilTime(*due).date, (unicode::CivilDate{2569, 3, 1}));
}

/// Numbers of all sizes, more often those that mean something.
rc::Gen<std::int64_t> anyNumber() {
    return rc::gen::oneOf(
        rc::gen::inRange<std::int64_t>(-2, 70), rc::gen::inRange<std::int64_t>(-3'000'000, 3'000'000),
        rc::gen::arbitrary<std::int64_t>(),
        rc::gen::element(largest, largest - 1, smallest, smallest + 1, largest / 7, largest / 60));
}

RC_GTEST_PROP(ResolveDateProperty, AnyNumbersAreFine, ()) {
    const auto number = [] { return *anyNumber(); };
    const GeneratedTodo todo{static_cast<WhenKind>(*rc::gen::inRange(0, 26)),
                             number(),
                             number(),
                             number(),
                             *rc::gen::arbitrary<bool>(),
                             number(),
                             number(),
                             ""};
    const unicode::CivilCalendar& calendar = wednesday().calendar;
    const Instant now =
        unicode::CivilCalendar::earliest +
        *rc::gen::inRange<std::int64_t>(
            0, static_cast<std::int64_t>(unicode::CivilCalendar::latest - unicode::CivilCalendar::earliest));
    const auto due = resolveDate(todo, now, calendar);
    if (!due)
        return;
    RC_ASSERT(*due < unicode::CivilCalendar::latest);
    if (todo.kind == WhenKind::InMinutes || todo.kind == WhenKind::InHours) {
        RC_ASSERT(*due >= now);
        return;
    }
    // A whole minute, and no day before today except from December back to January.
    const unicode::CivilTime time = calendar.civilTime(*due);
    RC_ASSERT(calendar.instant(time.date, time.time) == *due);
    const unicode::CivilTime today = calendar.civilTime(now);
    RC_ASSERT(calendar.startOfDay(*due) >= calendar.startOfDay(now) ||
              (todo.kind == WhenKind::SpecificDate && today.date.month == 12 && time.date.month == 1 &&
               time.date.year == today.date.year));
}

} // namespace
} // namespace quillo::parser_tests

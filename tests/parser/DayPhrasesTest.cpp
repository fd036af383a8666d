/// Phrases that name a day. The corpus (tests/corpus) holds many more.
#include "parser/Where.h"

namespace quillo::parser_tests {
namespace {

TEST(OrdinalDays, TakeTheNextDayOfThatNumber) {
    EXPECT_TRUE(means(Where({2025, 3, 15}), "Pay rent on the 1st", "2025-04-01 09:00 | Pay rent"));
    EXPECT_TRUE(means(Where({2025, 12, 15}), "Pay rent on the 1st", "2026-01-01 09:00 | Pay rent"));
    EXPECT_TRUE(means(Where({2025, 3, 15}), "Pay rent on the 15", "2025-03-15 09:00 | Pay rent"));
}

TEST(OrdinalDays, NeedASuffixWithoutAPreposition) {
    EXPECT_TRUE(means(Where(), "Pick up the 15 reports", "nohint | Pick up the 15 reports"));
    EXPECT_TRUE(means(Where(), "Pick up the 15th report", "2025-03-15 09:00 | Pick up report"));
}

TEST(OrdinalDays, TryTheBareFormWhereTheFirstDayIsImpossible) {
    EXPECT_TRUE(means(Where(), "on the 32 bring the 5th form", "2025-03-05 09:00 | on the 32 bring form"));
    EXPECT_TRUE(
        means(Where(), "on the 32 by the 5", "none | on the 32 by the 5")); // only the first match counts
}

TEST(MonthDates, TakeTheComingOne) {
    EXPECT_TRUE(means(Where({2025, 3, 4}), "Dentist march 3", "2026-03-03 09:00 | Dentist"));
    EXPECT_TRUE(means(Where({2025, 3, 3}), "Dentist march 3", "2025-03-03 09:00 | Dentist"));
    EXPECT_TRUE(means(Where({2025, 3, 3}, {23, 59}), "Dentist Mar 3rd", "2025-03-03 09:00 | Dentist"));
}

TEST(MonthDates, AreNotForImpossibleNumbers) {
    EXPECT_TRUE(means(Where(), "Dentist march 0", "none | Dentist march 0"));
    EXPECT_TRUE(means(Where(), "Dentist march 32", "none | Dentist march 32"));
    EXPECT_TRUE(means(Where(), "Dentist march 32 or the 5th", "2025-03-05 09:00 | Dentist march 32 or"));
    EXPECT_TRUE(means(Where(), "Dentist march 32 or friday", "2025-03-07 09:00 | Dentist march 32 or"));
}

TEST(MonthDates, RollImpossibleDaysOverAndJudgeTheRolledDay) {
    EXPECT_TRUE(means(Where({2025, 3, 2}), "Skip feb 30", "2025-03-02 09:00 | Skip"));
    EXPECT_TRUE(means(Where({2025, 3, 3}), "Skip feb 30", "2026-03-02 09:00 | Skip"));
}

TEST(DayWords, ThisWeekendIsTheComingSaturday) {
    EXPECT_TRUE(means(Where({2025, 3, 8}), "Report this weekend", "2025-03-08 09:00 | Report"));
    EXPECT_TRUE(means(Where({2025, 3, 9}), "Report this weekend", "2025-03-15 09:00 | Report"));
    EXPECT_TRUE(means(Where({2025, 3, 4}), "Report this weekend", "2025-03-08 09:00 | Report"));
}

TEST(DayWords, CountFromToday) {
    EXPECT_TRUE(means(Where(), "Ship day after tomorrow", "2025-03-06 09:00 | Ship"));
    EXPECT_TRUE(means(Where(), "Ship today", "2025-03-04 09:00 | Ship"));
    EXPECT_TRUE(means(Where({2025, 12, 31}), "Ship tomorrow", "2026-01-01 09:00 | Ship"));
}

TEST(Weekdays, AreOneToSevenDaysAhead) {
    const Where monday({2025, 3, 3});
    EXPECT_TRUE(means(monday, "Call next monday", "2025-03-10 09:00 | Call"));
    EXPECT_TRUE(means(monday, "Call monday", "2025-03-10 09:00 | Call"));
    EXPECT_TRUE(means(monday, "Call next friday", "2025-03-07 09:00 | Call"));
    EXPECT_TRUE(means(monday, "Call this friday", "2025-03-07 09:00 | Call"));
    EXPECT_TRUE(means(monday, "Call SUNDAY", "2025-03-09 09:00 | Call"));
}

TEST(DaysFromDay, CountFromTodayOrTomorrow) {
    EXPECT_TRUE(means(Where(), "Buy 2 days from tomorrow", "2025-03-07 09:00 | Buy"));
    EXPECT_TRUE(means(Where(), "Buy 1 week from today", "2025-03-11 09:00 | Buy"));
    EXPECT_TRUE(means(Where(), "Buy 0 days from tomorrow", "2025-03-05 09:00 | Buy"));
}

TEST(DaysFromDay, MeanNowWhereTheDateIsBeyondAllDates) {
    EXPECT_TRUE(means(Where(), "Buy 9000000 days from tomorrow", "2025-03-04 09:00 | Buy"));
    EXPECT_TRUE(means(Where(), "Buy 9223372036854775807 weeks from today", "2025-03-04 09:00 | Buy"));
    EXPECT_TRUE(
        means(Where(), "Buy 9223372036854775808 weeks from tomorrow",
              "2025-03-05 09:00 | Buy 9223372036854775808 weeks from")); // no number; "tomorrow" remains
}

TEST(RelativeOffsets, KeepTheClockTimeAndDropTheSeconds) {
    EXPECT_TRUE(means(Where({2025, 3, 4}, {10, 41}), "Email Sam in 2 hours", "2025-03-04 12:41 | Email Sam"));
    EXPECT_TRUE(means(Where({2025, 3, 4}, {10, 41}), "pay rent in 3 days", "2025-03-07 10:41 | pay rent"));
    EXPECT_TRUE(means(Where({2025, 3, 4}, {10, 41}), "pay rent in a week", "2025-03-11 10:41 | pay rent"));
    EXPECT_TRUE(means(Where({2025, 3, 4}, {23, 41}), "tea 30 min from now", "2025-03-05 00:11 | tea"));
    const Where here;
    const Instant due = *here.parser.parse("Email Sam in 2 hours", here.now).task.dueDate;
    EXPECT_EQ(due - here.now, 2 * 3600 - 0.25);
}

TEST(RelativeOffsets, GiveWayToATimeInTheText) {
    EXPECT_TRUE(means(Where(), "call in 3 days at 4pm", "2025-03-07 16:00 | call"));
    EXPECT_TRUE(means(Where(), "call in 3 days in the morning", "2025-03-07 09:00 | call in the"));
}

TEST(RelativeOffsets, EndWithTheYear9999) {
    EXPECT_TRUE(means(Where(), "call in 2912000 days", "9997-12-16 10:00 | call"));
    EXPECT_TRUE(means(Where(), "call in 9000000 days", "none | call in 9000000 days"));
    EXPECT_TRUE(
        means(Where(), "call in 9223372036854775807 hours", "none | call in 9223372036854775807 hours"));
    EXPECT_TRUE(
        means(Where(), "call in 99999999999999999999 weeks", "none | call in 99999999999999999999 weeks"));
}

TEST(Rules, KnowAsciiOnly) {
    EXPECT_TRUE(means(Where(), "call in \u0663 days", "none | call in \u0663 days"));
    EXPECT_TRUE(means(Where(), "call thur\u017Fday friday", "none | call thur\u017Fday friday"));
    EXPECT_TRUE(means(Where(), "call in 2 wee\u212As", "none | call in 2 wee\u212As"));
    EXPECT_TRUE(means(Where(), "call in\u00A02\u2003days", "2025-03-06 10:00 | call"));
}

} // namespace
} // namespace quillo::parser_tests

/// Clock times, parts of the day, and what is left as the title. The corpus (tests/corpus) holds many more.
#include "parser/TitleCleaning.h"
#include "parser/Where.h"

namespace quillo::parser_tests {
namespace {

TEST(ClockTimes, MayHavePassed) {
    EXPECT_TRUE(means(Where(), "call at 8am", "2025-03-04 08:00 | call"));
}

TEST(ClockTimes, JoinADay) {
    EXPECT_TRUE(means(Where(), "call mom tomorrow at 9am", "2025-03-05 09:00 | call mom"));
    EXPECT_TRUE(means(Where(), "lunch friday at noon", "2025-03-07 12:00 | lunch at"));
    EXPECT_TRUE(means(Where(), "launch friday midnight", "2025-03-07 00:00 | launch"));
}

TEST(ClockTimes, NeedNoColon) {
    EXPECT_TRUE(means(Where(), "standup at 930am", "2025-03-04 09:30 | standup"));
    EXPECT_TRUE(means(Where(), "standup at 1530", "2025-03-04 15:30 | standup"));
    EXPECT_TRUE(means(Where(), "standup at 2460 friday", "2025-03-07 09:00 | standup at 2460"));
    EXPECT_TRUE(means(Where(), "standup at 2460", "none | standup at 2460"));
}

TEST(ClockTimes, KnowTwelve) {
    EXPECT_TRUE(means(Where(), "call 12am", "2025-03-04 00:00 | call"));
    EXPECT_TRUE(means(Where(), "call 12pm", "2025-03-04 12:00 | call"));
    EXPECT_TRUE(means(Where(), "call 12:45 AM", "2025-03-04 00:45 | call"));
}

TEST(ClockTimes, ABareHourIsMeantForTheWakingDay) {
    EXPECT_TRUE(means(Where(), "walk at 3", "2025-03-04 15:00 | walk"));
    EXPECT_TRUE(means(Where(), "walk at 7", "2025-03-04 19:00 | walk"));
    EXPECT_TRUE(means(Where(), "walk at 8", "2025-03-04 08:00 | walk"));
    EXPECT_TRUE(means(Where(), "walk at 9", "2025-03-04 09:00 | walk"));
    EXPECT_TRUE(means(Where(), "walk at 0", "2025-03-04 00:00 | walk"));
    EXPECT_TRUE(means(Where(), "walk at 9 tonight", "2025-03-04 21:00 | walk"));
    EXPECT_TRUE(means(Where(), "dinner tonight at 8", "2025-03-04 20:00 | dinner"));
}

TEST(ClockTimes, OutsideTheDayYieldNothing) {
    EXPECT_TRUE(means(Where(), "walk at 45", "none | walk at 45"));
    EXPECT_TRUE(means(Where(), "walk at 7:60", "none | walk at 7:60"));
    EXPECT_TRUE(means(Where(), "walk 25pm", "none | walk 25pm"));
}

TEST(PeriodWords, SetTheHour) {
    EXPECT_TRUE(means(Where(), "gym in the morning tomorrow", "2025-03-05 09:00 | gym in the"));
    EXPECT_TRUE(means(Where(), "report friday afternoon", "2025-03-07 14:00 | report"));
    EXPECT_TRUE(means(Where(), "walk friday evening", "2025-03-07 18:00 | walk"));
    EXPECT_TRUE(means(Where(), "Good night", "2025-03-04 20:00 | Good"));
    EXPECT_TRUE(means(Where(), "dinner tonight", "2025-03-04 20:00 | dinner"));
    EXPECT_TRUE(means(Where(), "walk friday evening at 5pm", "2025-03-07 17:00 | walk evening"));
}

TEST(Joining, ChangesOfTheClock) {
    // On 2025-03-30 the clock goes from 2:00 to 3:00, on 2025-10-26 from 3:00 back to 2:00.
    EXPECT_TRUE(means(Where({2025, 3, 29}), "wake tomorrow at 2:30am", "2025-03-30 03:30 | wake"));
    const Where autumn({2025, 10, 25});
    const Instant due = *autumn.parser.parse("wake tomorrow at 2:30am", autumn.now).task.dueDate;
    EXPECT_EQ(due.unixSeconds(), 1761442200); // 1:30 UTC, the later of the two
}

TEST(Titles, LoseThePhrasesAndWhatHeldThem) {
    EXPECT_TRUE(means(Where(), "tomorrow: call mom, at 9am.", "2025-03-05 09:00 | call mom"));
    EXPECT_TRUE(means(Where(), "call   mom\ttomorrow  please", "2025-03-05 09:00 | call mom please"));
    EXPECT_TRUE(means(Where(), "jan 5 am", "2026-01-05 05:00 | jan 5 am"));
    EXPECT_TRUE(means(Where(), "call at 5 days from now", "2025-03-09 17:00 | call"));
}

TEST(TitleCleaning, RemovesTheUnionOfTheRanges) {
    EXPECT_EQ(cleanTitle(u"abcdef", {{2, 4}, {1, 3}}), "aef");
    EXPECT_EQ(cleanTitle(u"abcdef", {{0, 6}, {2, 3}}), "");
    EXPECT_EQ(cleanTitle(u"abcdef", {{4, 6}, {0, 2}}), "cd");
}

TEST(TitleCleaning, WithoutRangesOnlyTrims) {
    EXPECT_EQ(cleanTitle(u"  a  b;  ", {}), "a  b;");
}

TEST(TitleCleaning, TrimsLoosePunctuationFromBothEnds) {
    EXPECT_EQ(cleanTitle(u"x ,;.: a, b ;:. x", {{0, 1}, {16, 17}}), "a, b");
    EXPECT_EQ(cleanTitle(u"x .,;:", {{0, 1}}), "");
}

} // namespace
} // namespace quillo::parser_tests

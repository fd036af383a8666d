// On which day a completion counts, and what follows from that: streaks, the week, what is forgotten.
#include "stats/StatsStore.h"
#include "stats/StatsWorld.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

using support::calendarIn;
using support::StatsWorld;

class StatsStoreDaysTest : public testing::Test {
protected:
    void found(const std::string& dailyCounts) {
        world.preferences.set(preference_keys::statsDaily, Data(dailyCounts));
        store.emplace(world.dependencies());
    }

    StatsWorld world;
    std::optional<StatsStore> store{std::in_place, world.dependencies()};
};

TEST_F(StatsStoreDaysTest, AnEmptyTodayDoesNotEndAStreak) {
    world.completeOnDays(*store, {-2, -1});
    EXPECT_EQ(store->currentStreak(), 2);
    EXPECT_EQ(store->bestStreak(), 2);
}

TEST_F(StatsStoreDaysTest, TheLatestRunIsTheCurrentStreakHoweverLongAgo) {
    world.completeOnDays(*store, {-12, -11, -10});
    EXPECT_EQ(store->currentStreak(), 3);
    EXPECT_EQ(store->bestStreak(), 3);
}

TEST_F(StatsStoreDaysTest, TheLongestRunIsTheBestStreak) {
    world.completeOnDays(*store, {-40, -39, -38, -37, -20, -19, -5, -4, -3});
    EXPECT_EQ(store->currentStreak(), 3);
    EXPECT_EQ(store->bestStreak(), 4);
    world.completeOnDays(*store, {-1});
    EXPECT_EQ(store->currentStreak(), 1);
    EXPECT_EQ(store->bestStreak(), 4);
    world.completeOnDays(*store, {-2});
    EXPECT_EQ(store->currentStreak(), 5);
    EXPECT_EQ(store->bestStreak(), 5);
}

TEST_F(StatsStoreDaysTest, StreaksSeeSixtyDays) {
    world.completeOnDays(*store, {-60});
    EXPECT_EQ(store->currentStreak(), 0);
    EXPECT_EQ(store->bestStreak(), 0);
    EXPECT_EQ(store->dailyCounts().get().size(), 1U);
    world.completeOnDays(*store, {-59});
    EXPECT_EQ(store->currentStreak(), 1);
    EXPECT_EQ(store->bestStreak(), 1);
}

TEST_F(StatsStoreDaysTest, StreaksEndAtSixty) {
    for (int day = 1; day <= 70; ++day) {
        world.complete(*store);
        EXPECT_EQ(store->currentStreak(), std::min(day, 60));
        EXPECT_EQ(store->bestStreak(), std::min(day, 60));
        world.goDays(1);
    }
    EXPECT_EQ(store->currentStreak(), 59) << "today is empty and takes one of the sixty";
    EXPECT_EQ(store->dailyCounts().get().size(), 61U);
}

TEST_F(StatsStoreDaysTest, DaysWithACountBelowOneAreEmpty) {
    found(R"({"2025-03-05":1,"2025-03-04":0,"2025-03-03":1,"2025-03-02":2})");
    EXPECT_EQ(store->currentStreak(), 1);
    EXPECT_EQ(store->bestStreak(), 2);
}

TEST_F(StatsStoreDaysTest, TheWeekHasSevenDaysTodayIncluded) {
    world.completeOnDays(*store, {-7, -6, -6, 0});
    EXPECT_EQ(store->thisWeekCount(), 3);
    EXPECT_EQ(store->todayCount(), 1);
    world.goDays(1);
    EXPECT_EQ(store->thisWeekCount(), 1);
    EXPECT_EQ(store->todayCount(), 0);
}

TEST_F(StatsStoreDaysTest, TheWeekIgnoresKeysThatAreNoDays) {
    found(R"({"2025-03-05":1,"2025-3-5":2,"2025-03-32":4,"whenever":8,"":16,"2025-03-06":32})");
    EXPECT_EQ(store->thisWeekCount(), 33) << "days to come count, as after the clock was set back";
}

TEST_F(StatsStoreDaysTest, ForgetsDaysMoreThanSixtyDaysBefore) {
    world.complete(*store); // on 5 March
    world.goDays(1);
    world.complete(*store);
    world.goDays(59); // sixty days after 5 March
    world.complete(*store);
    EXPECT_EQ(store->dailyCounts().get(),
              (DailyCounts{{"2025-03-05", 1}, {"2025-03-06", 1}, {"2025-05-04", 1}}));
    world.goDays(1);
    EXPECT_EQ(store->dailyCounts().get().size(), 3U) << "only completions make it forget";
    world.complete(*store);
    EXPECT_EQ(store->dailyCounts().get(),
              (DailyCounts{{"2025-03-06", 1}, {"2025-05-04", 1}, {"2025-05-05", 1}}));
    world.goDays(61);
    world.complete(*store);
    EXPECT_EQ(store->dailyCounts().get(), (DailyCounts{{"2025-07-05", 1}}));
    EXPECT_EQ(store->lifetimeCompletions().get(), 5) << "but never how many there were";
}

TEST_F(StatsStoreDaysTest, ForgetsByTheNameOfTheDay) {
    found(R"({"":1,"1999":1,"2025-01-03":1,"2025-01-04":1,"some day":1})");
    world.complete(*store);
    EXPECT_EQ(store->dailyCounts().get(),
              (DailyCounts{{"2025-01-04", 1}, {"2025-03-05", 1}, {"some day", 1}}));
}

TEST_F(StatsStoreDaysTest, StreaksGoOnOverTheEndOfTheYear) {
    world.goTo({2024, 12, 29});
    for (int day = 1; day <= 6; ++day) {
        world.complete(*store);
        EXPECT_EQ(store->currentStreak(), day);
        EXPECT_EQ(store->thisWeekCount(), day);
        world.goDays(1);
    }
    EXPECT_TRUE(store->dailyCounts().get().contains("2024-12-31"));
    EXPECT_TRUE(store->dailyCounts().get().contains("2025-01-01"));
}

TEST_F(StatsStoreDaysTest, CountsALeapDay) {
    world.goTo({2024, 2, 27});
    for (int day = 1; day <= 5; ++day) {
        world.complete(*store);
        world.goDays(1);
    }
    EXPECT_EQ(store->currentStreak(), 5);
    EXPECT_TRUE(store->dailyCounts().get().contains("2024-02-29"));
    EXPECT_FALSE(store->dailyCounts().get().contains("2024-02-30"));
}

struct StreakAcrossClockChange {
    const char* zone;
    unicode::CivilDate tenDaysBefore;
};

/// For twenty days around each change one task is completed a day, at any time of the day.
TEST_F(StatsStoreDaysTest, ClockChangesNeitherEndAStreakNorMoveADay) {
    for (const StreakAcrossClockChange& change : std::vector<StreakAcrossClockChange>{
             {"Europe/Berlin", {2025, 3, 20}},
             {"Europe/Berlin", {2025, 10, 16}},
             {"America/New_York", {2025, 2, 27}},
             {"America/New_York", {2025, 10, 23}},
             {"Australia/Lord_Howe", {2025, 3, 27}},
             {"Australia/Lord_Howe", {2025, 9, 25}},
             {"America/Sao_Paulo", {2018, 10, 25}}, // On 4 November there is no midnight.
             {"America/Sao_Paulo", {2019, 2, 7}},   // 16 February has 23 o'clock twice.
             {"Asia/Beirut", {2025, 3, 20}},        // On 30 March there is no midnight.
             {"Asia/Beirut", {2025, 10, 16}},
             {"Asia/Pyongyang", {2018, 4, 24}}, // On 4 May there is no half past 23.
             {"America/Havana", {2025, 10, 23}},
         }) {
        for (const unicode::ClockTime time : std::vector<unicode::ClockTime>{
                 {0, 0}, {0, 30}, {1, 59}, {2, 30}, {12, 0}, {22, 59}, {23, 59}}) {
            StatsWorld there(change.zone);
            StatsStore statistics(there.dependencies());
            for (int day = 0; day < 20; ++day) {
                unicode::CivilDate date = change.tenDaysBefore;
                date.day += day;
                there.goTo(date, time);
                // A time that is not there on this day may lie on the next one.
                if (there.calendar.civilTime(there.clock.now()).time != time)
                    there.goTo(date);
                there.complete(statistics);
                const std::string where = std::string(change.zone) + " at " + std::to_string(time.hour) +
                                          ':' + std::to_string(time.minute) + ", day " + std::to_string(day);
                ASSERT_EQ(statistics.currentStreak(), day + 1) << where;
                ASSERT_EQ(statistics.bestStreak(), day + 1) << where;
                ASSERT_EQ(statistics.thisWeekCount(), std::min(day + 1, 7)) << where;
                ASSERT_EQ(statistics.todayCount(), 1) << where;
            }
        }
    }
}

TEST_F(StatsStoreDaysTest, TheLastMinuteOfADayWithoutMidnightAfterItIsThatDays) {
    StatsWorld beirut("Asia/Beirut");
    StatsStore statistics(beirut.dependencies());
    beirut.goTo({2025, 3, 29}, {23, 59});
    beirut.complete(statistics);
    beirut.clock.advance(60); // 1:00 on 30 March
    beirut.complete(statistics);
    EXPECT_EQ(statistics.dailyCounts().get(), (DailyCounts{{"2025-03-29", 1}, {"2025-03-30", 1}}));
    EXPECT_EQ(statistics.currentStreak(), 2);
}

TEST_F(StatsStoreDaysTest, BothTimesRoundAnHourIsTheSameDay) {
    StatsWorld saoPaulo("America/Sao_Paulo");
    StatsStore statistics(saoPaulo.dependencies());
    saoPaulo.goTo({2019, 2, 16}, {22, 30});
    for (int hour = 0; hour < 3; ++hour) { // 22:30, 23:30 and 23:30 again
        saoPaulo.complete(statistics);
        saoPaulo.clock.advance(3600);
    }
    EXPECT_EQ(statistics.dailyCounts().get(), (DailyCounts{{"2019-02-16", 3}}));
    saoPaulo.complete(statistics);
    EXPECT_EQ(statistics.dailyCounts().get(), (DailyCounts{{"2019-02-16", 3}, {"2019-02-17", 1}}));
}

TEST_F(StatsStoreDaysTest, SixtyDaysBackIsADateWhateverTheClockDid) {
    // Sixty days after a day that ended at half past 23, at a later time of day.
    StatsWorld pyongyang("Asia/Pyongyang");
    StatsStore statistics(pyongyang.dependencies());
    pyongyang.goTo({2018, 5, 4});
    pyongyang.complete(statistics);
    pyongyang.goTo({2018, 7, 3}, {23, 45});
    pyongyang.complete(statistics);
    EXPECT_EQ(statistics.dailyCounts().get(), (DailyCounts{{"2018-05-04", 1}, {"2018-07-03", 1}}));
    pyongyang.goTo({2018, 7, 4}, {0, 0});
    pyongyang.complete(statistics);
    EXPECT_EQ(statistics.dailyCounts().get(), (DailyCounts{{"2018-07-03", 1}, {"2018-07-04", 1}}));
}

TEST_F(StatsStoreDaysTest, ADayThatTheZoneSkippedDoesNotEndAStreak) {
    StatsWorld apia("Pacific/Apia");
    StatsStore statistics(apia.dependencies());
    apia.goTo({2011, 12, 27});
    for (int day = 0; day < 6; ++day) {
        apia.complete(statistics);
        apia.clock.advance(86400);
    }
    apia.clock.advance(-86400);
    EXPECT_EQ(statistics.dailyCounts().get(), (DailyCounts{{"2011-12-27", 1},
                                                           {"2011-12-28", 1},
                                                           {"2011-12-29", 1},
                                                           {"2011-12-31", 1},
                                                           {"2012-01-01", 1},
                                                           {"2012-01-02", 1}}));
    EXPECT_EQ(statistics.currentStreak(), 6);
    EXPECT_EQ(statistics.bestStreak(), 6);

    StatsWorld berlin;
    berlin.preferences.set(
        preference_keys::statsDaily,
        Data(R"({"2011-12-27":1,"2011-12-28":1,"2011-12-29":1,"2011-12-31":1,"2012-01-01":1})"));
    berlin.goTo({2012, 1, 1});
    StatsStore elsewhere(berlin.dependencies());
    EXPECT_EQ(elsewhere.currentStreak(), 2) << "where that day was, it was empty";
    EXPECT_EQ(elsewhere.bestStreak(), 3);
}

TEST_F(StatsStoreDaysTest, FollowsTheUserIntoAnotherZone) {
    world.goTo({2025, 3, 5}, {23, 30});
    world.complete(*store);
    EXPECT_EQ(store->todayCount(), 1);
    EXPECT_EQ(store->earnedAwards().get(), (std::set<Award>{Award::nightOwl}));

    world.calendar = calendarIn("Asia/Tokyo"); // where it is 7:30 on the 6th
    EXPECT_EQ(store->todayCount(), 0);
    EXPECT_EQ(store->currentStreak(), 1);
    world.complete(*store);
    EXPECT_EQ(store->dailyCounts().get(), (DailyCounts{{"2025-03-05", 1}, {"2025-03-06", 1}}));
    EXPECT_EQ(store->todayCount(), 1);
    EXPECT_EQ(store->currentStreak(), 2);
    EXPECT_EQ(store->earnedAwards().get(), (std::set<Award>{Award::nightOwl, Award::earlyBird}));

    world.calendar = calendarIn("America/New_York"); // where it is 17:30 on the 5th
    EXPECT_EQ(store->todayCount(), 1);
    EXPECT_EQ(store->thisWeekCount(), 2);
    EXPECT_EQ(store->currentStreak(), 1) << "the 6th is yet to come";
    world.complete(*store);
    EXPECT_EQ(store->dailyCounts().get(), (DailyCounts{{"2025-03-05", 2}, {"2025-03-06", 1}}));
}

TEST_F(StatsStoreDaysTest, NamesDaysAlikeInEveryCalendarOfTheWorld) {
    for (const char* locale :
         {"th_TH", "fa_IR", "ar_SA", "ja_JP@calendar=japanese", "he_IL@calendar=hebrew"}) {
        StatsWorld there("Asia/Bangkok");
        there.goTo({2025, 3, 5});
        there.calendar = calendarIn("Asia/Bangkok", locale);
        StatsStore statistics(there.dependencies());
        for (int day = 1; day <= 30; ++day) {
            there.complete(statistics);
            ASSERT_EQ(statistics.currentStreak(), day) << locale;
            there.goDays(1);
        }
        EXPECT_EQ(statistics.dailyCounts().get().begin()->first, "2025-03-05") << locale;
        EXPECT_EQ(statistics.dailyCounts().get().rbegin()->first, "2025-04-03") << locale;
    }
}

TEST_F(StatsStoreDaysTest, ComesThroughTheEndOfTime) {
    world.goTo({9999, 12, 30});
    world.complete(*store);
    world.clock.advance(86400);
    world.complete(*store);
    world.clock.advance(86400);
    world.complete(*store);
    EXPECT_EQ(store->dailyCounts().get(), (DailyCounts{{"9999-12-30", 1}, {"9999-12-31", 2}}));
    EXPECT_EQ(store->currentStreak(), 2);
    EXPECT_EQ(store->thisWeekCount(), 3);
    world.clock.set({-1e15});
    world.complete(*store);
    EXPECT_EQ(store->todayCount(), 1);
    EXPECT_EQ(store->currentStreak(), 1);
    EXPECT_EQ(store->dailyCounts().get().size(), 3U);
}

} // namespace
} // namespace quillo

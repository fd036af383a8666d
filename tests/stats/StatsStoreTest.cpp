// What completions do to counts, records and awards. Days and streaks are in StatsStoreDaysTest.cpp, what is
// stored in StatsPersistenceTest.cpp.
#include "stats/StatsStore.h"

#include "stats/StatsWorld.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::StatsWorld;
using support::Task;
using Awards = std::set<Award>;

class StatsStoreTest : public testing::Test {
protected:
    StatsWorld world;
    StatsStore store{world.dependencies()};
    int awardPosts = 0;
    Connection listening = world.notifications.observe(notifications::awardsEarned, [this] { ++awardPosts; });
};

TEST_F(StatsStoreTest, UsesThePublishedNames) {
    EXPECT_EQ(notifications::awardsEarned, "Quillo.AwardsEarned");
    EXPECT_EQ(preference_keys::statsLifetime, "Quillo.stats.lifetime");
    EXPECT_EQ(preference_keys::statsFastest, "Quillo.stats.fastest");
    EXPECT_EQ(preference_keys::statsSlowest, "Quillo.stats.slowest");
    EXPECT_EQ(preference_keys::statsDaily, "Quillo.stats.daily");
    EXPECT_EQ(preference_keys::statsAwards, "Quillo.stats.awards");
    EXPECT_EQ(preference_keys::statsEnabled, "Quillo.stats.enabled");
}

TEST_F(StatsStoreTest, StartsEmpty) {
    EXPECT_TRUE(store.isEnabled());
    EXPECT_EQ(store.lifetimeCompletions().get(), 0);
    EXPECT_EQ(store.fastest().get(), std::nullopt);
    EXPECT_EQ(store.slowest().get(), std::nullopt);
    EXPECT_EQ(store.dailyCounts().get(), DailyCounts());
    EXPECT_EQ(store.earnedAwards().get(), Awards());
    EXPECT_EQ(store.newlyEarnedThisSession().get(), Awards());
    EXPECT_EQ(store.currentStreak(), 0);
    EXPECT_EQ(store.bestStreak(), 0);
    EXPECT_EQ(store.thisWeekCount(), 0);
    EXPECT_EQ(store.todayCount(), 0);
    EXPECT_EQ(store.averageSeconds(), std::nullopt);
    store.drain();
    EXPECT_EQ(world.preferences.writes(), 0);
}

TEST_F(StatsStoreTest, MakesTheFirstCompletionBothRecords) {
    world.complete(store, 3600, "first");
    const SpeedRecord expected{"first", 3600, world.clock.now()};
    EXPECT_EQ(store.lifetimeCompletions().get(), 1);
    EXPECT_EQ(store.fastest().get(), expected);
    EXPECT_EQ(store.slowest().get(), expected);
    EXPECT_EQ(store.averageSeconds(), 3600);
    EXPECT_EQ(store.dailyCounts().get(), (DailyCounts{{"2025-03-05", 1}}));
    EXPECT_EQ(store.todayCount(), 1);
    EXPECT_EQ(store.thisWeekCount(), 1);
    EXPECT_EQ(store.currentStreak(), 1);
    EXPECT_EQ(store.bestStreak(), 1);
}

TEST_F(StatsStoreTest, KeepsTheOlderOfEqualRecords) {
    world.complete(store, 3600, "first");
    world.complete(store, 3600, "second");
    EXPECT_EQ(store.fastest().get()->title, "first");
    EXPECT_EQ(store.slowest().get()->title, "first");
    EXPECT_EQ(store.lifetimeCompletions().get(), 2);
}

TEST_F(StatsStoreTest, BreaksOneRecordAtATime) {
    world.complete(store, 3600, "first");
    world.complete(store, 3600.5, "slower");
    EXPECT_EQ(store.fastest().get()->title, "first");
    EXPECT_EQ(store.slowest().get()->title, "slower");
    world.complete(store, 3599.5, "faster");
    EXPECT_EQ(store.fastest().get()->title, "faster");
    EXPECT_EQ(store.slowest().get()->title, "slower");
    EXPECT_EQ(store.averageSeconds(), 3600);
    world.complete(store, 0, "at once");
    EXPECT_EQ(store.fastest().get()->durationSeconds, 0);
}

TEST_F(StatsStoreTest, CountsATaskMadeAfterItsCompletionAsQuickButAsNoRecord) {
    world.complete(store, -10);
    EXPECT_EQ(store.lifetimeCompletions().get(), 1);
    EXPECT_EQ(store.todayCount(), 1);
    EXPECT_EQ(store.fastest().get(), std::nullopt);
    EXPECT_EQ(store.slowest().get(), std::nullopt);
    EXPECT_EQ(store.averageSeconds(), std::nullopt);
    EXPECT_EQ(store.earnedAwards().get(), (Awards{Award::lightningFast, Award::quickDraw}));
    EXPECT_EQ(awardPosts, 1);
}

TEST_F(StatsStoreTest, DoesNothingWhileSwitchedOff) {
    world.preferences.set(preference_keys::statsEnabled, false);
    EXPECT_FALSE(store.isEnabled());
    const int writes = world.preferences.writes();
    world.complete(store, 30);
    store.drain();
    EXPECT_EQ(store.lifetimeCompletions().get(), 0);
    EXPECT_EQ(store.fastest().get(), std::nullopt);
    EXPECT_EQ(store.dailyCounts().get(), DailyCounts());
    EXPECT_EQ(store.earnedAwards().get(), Awards());
    EXPECT_EQ(awardPosts, 0);
    EXPECT_EQ(world.preferences.writes(), writes);

    world.preferences.set(preference_keys::statsEnabled, true);
    world.complete(store, 30);
    EXPECT_EQ(store.lifetimeCompletions().get(), 1);
}

TEST_F(StatsStoreTest, IsOnUnlessABooleanSaysOtherwise) {
    for (const Value& value :
         std::vector<Value>{true, std::int64_t{0}, 0.0, std::string("false"), Data("0")}) {
        world.preferences.set(preference_keys::statsEnabled, value);
        EXPECT_TRUE(store.isEnabled()) << value.index();
    }
}

TEST_F(StatsStoreTest, EarnsSeveralAwardsInOneNotification) {
    world.goTo({2025, 3, 5}, {23, 30});
    world.complete(store, 59);
    const Awards expected{Award::lightningFast, Award::quickDraw, Award::nightOwl};
    EXPECT_EQ(store.earnedAwards().get(), expected);
    EXPECT_EQ(store.newlyEarnedThisSession().get(), expected);
    EXPECT_EQ(awardPosts, 1);
}

TEST_F(StatsStoreTest, PostsNothingWhereNothingNewIsEarned) {
    world.complete(store, 3600);
    EXPECT_EQ(awardPosts, 0);
    world.complete(store, 200);
    EXPECT_EQ(awardPosts, 1);
    world.complete(store, 200);
    EXPECT_EQ(awardPosts, 1);
    world.complete(store, 20);
    EXPECT_EQ(awardPosts, 2);
    EXPECT_EQ(store.newlyEarnedThisSession().get(), (Awards{Award::lightningFast, Award::quickDraw}));
}

TEST_F(StatsStoreTest, GoesByTheHourWhereTheUserLives) {
    struct Row {
        unicode::ClockTime time;
        Awards expected;
    };
    for (const Row& row : std::vector<Row>{{{0, 0}, {Award::earlyBird}},
                                           {{7, 59}, {Award::earlyBird}},
                                           {{8, 0}, {}},
                                           {{21, 59}, {}},
                                           {{22, 0}, {Award::nightOwl}},
                                           {{23, 59}, {Award::nightOwl}}}) {
        for (const char* zone : {"Europe/Berlin", "America/New_York", "Asia/Kathmandu"}) {
            StatsWorld there(zone);
            StatsStore statistics(there.dependencies());
            there.goTo({2025, 3, 5}, row.time);
            there.complete(statistics);
            EXPECT_EQ(statistics.earnedAwards().get(), row.expected)
                << zone << ' ' << row.time.hour << ':' << row.time.minute;
        }
    }
}

TEST_F(StatsStoreTest, EarnsTheStreakAwardsOnTheSeventhAndThirtiethDay) {
    for (int day = 1; day <= 30; ++day) {
        world.complete(store);
        EXPECT_EQ(store.currentStreak(), day);
        EXPECT_EQ(store.earnedAwards().get().contains(Award::weekLongWinner), day >= 7) << day;
        EXPECT_EQ(store.earnedAwards().get().contains(Award::monthlyMaven), day >= 30) << day;
        world.goDays(1);
    }
    EXPECT_EQ(awardPosts, 2);
}

TEST_F(StatsStoreTest, HasEverythingInPlaceWhenItPosts) {
    bool heard = false;
    const Connection connection = world.notifications.observe(notifications::awardsEarned, [&] {
        heard = true;
        EXPECT_EQ(store.lifetimeCompletions().get(), 1);
        EXPECT_EQ(store.newlyEarnedThisSession().get(), (Awards{Award::quickDraw}));
        EXPECT_EQ(store.earnedAwards().get(), (Awards{Award::quickDraw}));
        store.drain();
        EXPECT_EQ(world.stored(preference_keys::statsAwards), R"(["quickDraw"])");
    });
    world.complete(store, 100);
    EXPECT_TRUE(heard);
}

TEST_F(StatsStoreTest, AnnouncesOnlyWhatChanges) {
    world.complete(store, 3600);
    std::vector<std::string> heard;
    const auto note = [&heard](const char* name) {
        return [&heard, name](const auto&) { heard.emplace_back(name); };
    };
    const std::vector<Connection> connections = [&] {
        std::vector<Connection> all;
        all.push_back(store.lifetimeCompletions().observe(note("lifetime")));
        all.push_back(store.fastest().observe(note("fastest")));
        all.push_back(store.slowest().observe(note("slowest")));
        all.push_back(store.dailyCounts().observe(note("daily")));
        all.push_back(store.earnedAwards().observe(note("earned")));
        all.push_back(store.newlyEarnedThisSession().observe(note("new")));
        return all;
    }();
    world.complete(store, 3600);
    EXPECT_EQ(heard, (std::vector<std::string>{"lifetime", "daily"}));
    heard.clear();
    world.complete(store, 100);
    EXPECT_EQ(heard, (std::vector<std::string>{"lifetime", "daily", "fastest", "earned", "new"}));
    heard.clear();
    store.reset();
    EXPECT_EQ(heard, (std::vector<std::string>{"lifetime", "fastest", "slowest", "daily", "earned", "new"}));
}

TEST_F(StatsStoreTest, StopsCountingAtTheLargestCount) {
    const std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    world.preferences.set(preference_keys::statsLifetime, largest);
    world.preferences.set(preference_keys::statsDaily,
                          Data(R"({"2025-03-04":9223372036854775807,"2025-03-05":9223372036854775807})"));
    StatsStore full(world.dependencies());
    world.complete(full);
    EXPECT_EQ(full.lifetimeCompletions().get(), largest);
    EXPECT_EQ(full.todayCount(), largest);
    EXPECT_EQ(full.thisWeekCount(), largest);
    EXPECT_EQ(full.currentStreak(), 2);
}

TEST_F(StatsStoreTest, SumsUp) {
    world.completeOnDays(store, {-9, -8, -7, -1, 0});
    world.complete(store, 100, "quick");
    const StatisticsSummary summary = store.summary();
    EXPECT_TRUE(summary.enabled);
    EXPECT_EQ(summary.today, 2);
    EXPECT_EQ(summary.thisWeek, 3);
    EXPECT_EQ(summary.allTime, 6);
    EXPECT_EQ(summary.streak, 2);
    EXPECT_EQ(summary.bestStreak, 3);
    EXPECT_EQ(summary.averageSeconds, 1850);
    EXPECT_EQ(summary.rank, "Hopper");
    EXPECT_EQ(summary.progress, "6 tasks completed · 19 more to reach Leaper");
    EXPECT_EQ(summary.fastest, (SpeedRecord{"quick", 100, world.clock.now()}));
    EXPECT_EQ(summary.slowest->durationSeconds, 3600);
    EXPECT_EQ(summary.awards, (std::vector<Award>{Award::quickDraw}));
}

TEST_F(StatsStoreTest, SumsUpNothing) {
    world.preferences.set(preference_keys::statsEnabled, false);
    const StatisticsSummary summary = store.summary();
    EXPECT_FALSE(summary.enabled);
    EXPECT_EQ(summary.allTime, 0);
    EXPECT_EQ(summary.averageSeconds, std::nullopt);
    EXPECT_EQ(summary.rank, "Tadpole");
    EXPECT_EQ(summary.progress, "0 tasks completed · 5 more to reach Hopper");
    EXPECT_EQ(summary.fastest, std::nullopt);
    EXPECT_EQ(summary.slowest, std::nullopt);
    EXPECT_TRUE(summary.awards.empty());
}

TEST_F(StatsStoreTest, ListsAwardsInTheOrderOfTheirDeclaration) {
    world.goTo({2025, 3, 5}, {23, 0});
    world.complete(store, 604801);
    world.goTo({2025, 3, 6}, {6, 0});
    world.complete(store, 30);
    EXPECT_EQ(store.summary().awards,
              (std::vector<Award>{Award::lightningFast, Award::quickDraw, Award::longGame, Award::earlyBird,
                                  Award::nightOwl}));
}

} // namespace
} // namespace quillo

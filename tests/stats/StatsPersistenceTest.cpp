// What is stored, found again, and not written over.
#include "stats/StatsStore.h"
#include "stats/StatsWorld.h"
#include "support/CapturedLog.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <vector>

namespace quillo {
namespace {

using namespace preference_keys;
using support::StatsWorld;
using Awards = std::set<Award>;

const std::vector<std::string_view> allKeys = {statsLifetime, statsFastest, statsSlowest, statsDaily,
                                               statsAwards};

void expectEqual(const StatsStore& left, const StatsStore& right) {
    EXPECT_EQ(left.lifetimeCompletions().get(), right.lifetimeCompletions().get());
    EXPECT_EQ(left.fastest().get(), right.fastest().get());
    EXPECT_EQ(left.slowest().get(), right.slowest().get());
    EXPECT_EQ(left.dailyCounts().get(), right.dailyCounts().get());
    EXPECT_EQ(left.earnedAwards().get(), right.earnedAwards().get());
}

TEST(StatsPersistence, StoresEachCompletionInOneGo) {
    StatsWorld world;
    world.clock.set({762000000.25}); // 2025-02-23 11:40 in Berlin
    StatsStore store(world.dependencies());
    world.complete(store, 90.5, "Call \"mom\"");
    store.drain();
    EXPECT_EQ(world.preferences.writes(), 1);
    EXPECT_EQ(world.preferences.integer(statsLifetime), 1);
    const std::string record =
        R"({"title":"Call \"mom\"","durationSeconds":90.5,"completedAt":762000000.25})";
    EXPECT_EQ(world.stored(statsFastest), record);
    EXPECT_EQ(world.stored(statsSlowest), record);
    EXPECT_EQ(world.stored(statsDaily), R"({"2025-02-23":1})");
    EXPECT_EQ(world.stored(statsAwards), R"(["quickDraw"])");
    EXPECT_EQ(world.preferences.size(), 5U);
}

TEST(StatsPersistence, StoresNoRecordWhereThereIsNone) {
    StatsWorld world;
    StatsStore store(world.dependencies());
    world.complete(store, -1);
    store.drain();
    EXPECT_EQ(world.preferences.value(statsFastest), std::nullopt);
    EXPECT_EQ(world.preferences.value(statsSlowest), std::nullopt);
    EXPECT_EQ(world.preferences.integer(statsLifetime), 1);
}

TEST(StatsPersistence, IsFoundAgainExceptForWhatIsNewInASession) {
    StatsWorld world;
    StatsStore first(world.dependencies());
    world.complete(first, 3, "quick");
    world.goDays(1);
    world.complete(first, 1e6 / 3, "slow");
    first.drain();
    const StatsStore second(world.dependencies());
    expectEqual(first, second);
    EXPECT_FALSE(first.newlyEarnedThisSession().get().empty());
    EXPECT_TRUE(second.newlyEarnedThisSession().get().empty());
}

TEST(StatsPersistence, AnnouncesAnAwardOnlyOnceInALifetime) {
    StatsWorld world;
    {
        StatsStore store(world.dependencies());
        world.complete(store, 100);
    }
    StatsStore store(world.dependencies());
    int posts = 0;
    const Connection listening = world.notifications.observe(notifications::awardsEarned, [&] { ++posts; });
    world.complete(store, 100);
    EXPECT_EQ(posts, 0);
    EXPECT_EQ(store.newlyEarnedThisSession().get(), Awards());
}

TEST(StatsPersistence, QuittingRightAfterACompletionLosesNothing) {
    StatsWorld world;
    for (int run = 1; run <= 20; ++run) {
        {
            StatsStore store(world.dependencies());
            world.complete(store);
        }
        EXPECT_EQ(world.preferences.integer(statsLifetime), run);
    }
}

/// Preferences whose apply() can be made to wait.
class HoldingPreferences : public support::InMemoryPreferences {
public:
    void apply(std::vector<Change> changes) override {
        {
            std::unique_lock lock(mutex_);
            applying_ = true;
            changed_.notify_all();
            changed_.wait(lock, [this] { return !held_; });
        }
        support::InMemoryPreferences::apply(std::move(changes));
    }
    void waitUntilApplying() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return applying_; });
    }
    void release() {
        const std::lock_guard lock(mutex_);
        held_ = false;
        changed_.notify_all();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool held_ = true;
    bool applying_ = false;
};

TEST(StatsPersistence, NeverWaitsForTheDiskAndWritesASnapshot) {
    StatsWorld world;
    HoldingPreferences preferences;
    StatsStore store({preferences, world.clock, world.calendar, world.notifications});
    world.complete(store);
    preferences.waitUntilApplying();
    for (int more = 0; more < 100; ++more)
        world.complete(store); // While the first save waits.
    EXPECT_EQ(store.lifetimeCompletions().get(), 101);
    EXPECT_EQ(preferences.integer(statsLifetime), std::nullopt);
    preferences.release();
    store.drain();
    EXPECT_EQ(preferences.integer(statsLifetime), 101);
    EXPECT_EQ(preferences.writes(), 2) << "of the saves that waited only the last one mattered";
}

TEST(StatsPersistence, ASaveThatWaitsDoesNotBringBackWhatWasReset) {
    StatsWorld world;
    HoldingPreferences preferences;
    StatsStore store({preferences, world.clock, world.calendar, world.notifications});
    world.complete(store);
    preferences.waitUntilApplying();
    world.complete(store);
    store.reset();
    preferences.release();
    store.drain();
    EXPECT_EQ(preferences.size(), 0U);
}

TEST(StatsPersistence, ResettingForgetsEverythingButTheSwitch) {
    StatsWorld world;
    world.preferences.set(statsEnabled, true);
    StatsStore store(world.dependencies());
    world.complete(store, 30);
    store.drain();
    EXPECT_EQ(world.preferences.size(), 6U);

    store.reset();
    store.drain();
    EXPECT_EQ(world.preferences.size(), 1U);
    EXPECT_EQ(world.preferences.boolean(statsEnabled), true);
    EXPECT_TRUE(store.newlyEarnedThisSession().get().empty());
    StatsWorld untouched;
    expectEqual(store, StatsStore(untouched.dependencies()));

    int posts = 0;
    const Connection listening = world.notifications.observe(notifications::awardsEarned, [&] { ++posts; });
    world.complete(store, 30);
    EXPECT_EQ(posts, 1) << "awards can be earned anew";
    EXPECT_EQ(store.lifetimeCompletions().get(), 1);
    store.drain();
    EXPECT_EQ(world.preferences.integer(statsLifetime), 1);
}

TEST(StatsPersistence, ResettingWorksWhileSwitchedOff) {
    StatsWorld world;
    StatsStore store(world.dependencies());
    world.complete(store);
    world.preferences.set(statsEnabled, false);
    store.reset();
    store.drain();
    EXPECT_EQ(store.lifetimeCompletions().get(), 0);
    EXPECT_EQ(world.preferences.size(), 1U);
    EXPECT_FALSE(store.isEnabled());
}

TEST(StatsPersistence, TakesEachUnreadableValueAsAbsentAndNoOther) {
    const support::CapturedLog log;
    const std::map<std::string_view, Value> good = {
        {statsLifetime, std::int64_t{7}},
        {statsFastest, Data(R"({"title":"f","durationSeconds":1,"completedAt":2})")},
        {statsSlowest, Data(R"({"title":"s","durationSeconds":3,"completedAt":4})")},
        {statsDaily, Data(R"({"2025-03-05":5})")},
        {statsAwards, Data(R"(["nightOwl"])")},
    };
    const std::vector<Value> bad = {std::string("text"), true,        1.5,         Data(""),
                                    Data("{"),           Data("[]x"), Data("[1]"), Data(R"({"a":"b"})")};
    for (const std::string_view damaged : allKeys) {
        for (const Value& value : bad) {
            StatsWorld world;
            for (const auto& [key, stored] : good)
                world.preferences.set(key, key == damaged ? value : stored);
            const StatsStore store(world.dependencies());
            EXPECT_EQ(store.lifetimeCompletions().get(), damaged == statsLifetime ? 0 : 7);
            EXPECT_EQ(store.fastest().get().has_value(), damaged != statsFastest);
            EXPECT_EQ(store.slowest().get().has_value(), damaged != statsSlowest);
            EXPECT_EQ(store.dailyCounts().get().size(), damaged == statsDaily ? 0U : 1U);
            EXPECT_EQ(store.earnedAwards().get().size(), damaged == statsAwards ? 0U : 1U);
        }
    }
}

TEST(StatsPersistence, TakesAnAwardOfAnotherVersionForDamage) {
    const support::CapturedLog log;
    StatsWorld world;
    world.preferences.set(statsAwards, Data(R"(["nightOwl","frogKing"])"));
    EXPECT_EQ(StatsStore(world.dependencies()).earnedAwards().get(), Awards());
    EXPECT_EQ(log.lines().size(), 1U);
}

TEST(StatsPersistence, TakesALifetimeBelowNothingForNothing) {
    StatsWorld world;
    world.preferences.set(statsLifetime, std::int64_t{-5});
    EXPECT_EQ(StatsStore(world.dependencies()).lifetimeCompletions().get(), 0);
}

TEST(StatsPersistence, DoesNotWriteARecordThatCannotBeEncoded) {
    StatsWorld world;
    StatsStore store(world.dependencies());
    world.complete(store, 100, "fine");
    store.drain();
    const std::string before = world.stored(statsFastest);
    world.complete(store, 10, "cut \xE2\x82");
    store.drain();
    EXPECT_EQ(store.fastest().get()->durationSeconds, 10);
    EXPECT_EQ(world.stored(statsFastest), before);
    EXPECT_EQ(world.preferences.integer(statsLifetime), 2);
}

TEST(StatsPersistence, CopiesWhatItCannotReadAsideOnceBeforeWritingOverIt) {
    const support::CapturedLog log;
    StatsWorld world;
    world.preferences.set(statsDaily, Data("{\"2025"));
    world.preferences.set(statsAwards, Data("[\"frogKing\"]"));
    bool diskIsFull = true;
    std::vector<std::pair<std::string, std::string>> kept;
    StatsStoreDependencies dependencies = world.dependencies();
    dependencies.keepDamaged = [&](std::string_view key, std::string_view bytes) {
        if (!diskIsFull)
            kept.emplace_back(key, bytes);
        return !diskIsFull;
    };
    StatsStore store(dependencies);
    world.complete(store, 100);
    store.drain();
    EXPECT_EQ(world.preferences.integer(statsLifetime), 1);
    EXPECT_EQ(world.stored(statsDaily), "{\"2025") << "not while it cannot be kept";
    EXPECT_EQ(world.stored(statsAwards), "[\"frogKing\"]");

    diskIsFull = false;
    for (int time = 0; time < 3; ++time) {
        world.complete(store, 100);
        store.drain();
    }
    EXPECT_EQ(kept, (std::vector<std::pair<std::string, std::string>>{
                        {"Quillo.stats.daily", "{\"2025"}, {"Quillo.stats.awards", "[\"frogKing\"]"}}));
    EXPECT_EQ(world.stored(statsDaily), R"({"2025-03-05":4})");
    EXPECT_EQ(world.stored(statsAwards), R"(["quickDraw"])");
}

TEST(StatsPersistence, WritesOverWhatItCannotReadWhereNobodyKeepsIt) {
    const support::CapturedLog log;
    StatsWorld world;
    world.preferences.set(statsDaily, Data("{\"2025"));
    StatsStore store(world.dependencies());
    world.complete(store);
    store.drain();
    EXPECT_EQ(world.stored(statsDaily), R"({"2025-03-05":1})");
}

} // namespace
} // namespace quillo

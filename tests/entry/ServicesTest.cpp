#include "entry/Services.h"

#include "base/ManualExecutor.h"
#include "support/FixedClock.h"
#include "support/InMemoryKeyValueStore.h"
#include "support/TemporaryFolder.h"
#include "support/TodoItemBuilder.h"

#include <gtest/gtest.h>

#include <future>
#include <string>
#include <vector>

namespace quillo {
namespace {

using support::numberedId;
using support::Task;

struct ServicesTest : testing::Test {
    unicode::CivilCalendar calendar = *unicode::CivilCalendar::create("Europe/Berlin", "en_US");
    support::FixedClock clock;
    support::InMemoryPreferences preferences;
    support::InMemoryCloudStore cloud;
    support::TemporaryFolder folder;
    Backups backups{folder.path(), clock};
    ManualExecutor mainExecutor;
    Services services{Surroundings{preferences, cloud, clock, calendar, mainExecutor, backups}};

    std::int64_t stored(std::string_view key) const { return preferences.integer(key).value_or(0); }
};

TEST_F(ServicesTest, ACompletionIsCountedInTheStatisticsThenForTheReview) {
    std::vector<std::string> order;
    const Connection inbox =
        services.notifications().observe(notifications::inboxZero, [&] { order.emplace_back("inbox"); });
    const Connection awards = services.notifications().observe(notifications::awardsEarned,
                                                               [&] { order.emplace_back("statistics"); });
    const Connection review = services.notifications().observe(notifications::shouldRequestReview,
                                                               [&] { order.emplace_back("review"); });
    preferences.set(preference_keys::reviewCompletions, std::int64_t{4});
    services.todoStore().add(Task("a").id(numberedId(1)).made(clock.now()));
    services.todoStore().toggle(numberedId(1));
    EXPECT_EQ(order, (std::vector<std::string>{"inbox", "statistics", "review"}));
    EXPECT_EQ(services.statsStore().lifetimeCompletions().get(), 1);
}

TEST_F(ServicesTest, ReopeningIsCountedNowhere) {
    services.todoStore().add(Task("a").id(numberedId(1)).done());
    services.todoStore().toggle(numberedId(1));
    EXPECT_EQ(services.statsStore().lifetimeCompletions().get(), 0);
    EXPECT_EQ(stored(preference_keys::reviewCompletions), 0);
}

TEST_F(ServicesTest, DrainingHandsOverTheStatisticsToo) {
    services.todoStore().add(Task("a").id(numberedId(1)));
    services.todoStore().toggle(numberedId(1));
    EXPECT_TRUE(services.drain());
    EXPECT_EQ(stored(preference_keys::statsLifetime), 1);
}

TEST_F(ServicesTest, TellsWhenListAndStatisticsAreSaved) {
    services.todoStore().add(Task("a").id(numberedId(1)));
    services.todoStore().toggle(numberedId(1));
    std::promise<std::int64_t> lifetime;
    services.whenSaved([&](const Outcome& outcome) {
        EXPECT_TRUE(outcome);
        lifetime.set_value(stored(preference_keys::statsLifetime));
    });
    EXPECT_EQ(lifetime.get_future().get(), 1);
}

TEST_F(ServicesTest, TheStatisticsAreNotTouchedBeforeTheyAreNeeded) {
    const std::string damaged = "{";
    preferences.set(preference_keys::statsDaily, Data(damaged));
    services.todoStore().add(Task("a").id(numberedId(1)));
    EXPECT_TRUE(services.drain());
    EXPECT_EQ(preferences.data(preference_keys::statsDaily)->bytes(), damaged);
    services.todoStore().toggle(numberedId(1));
    EXPECT_TRUE(services.drain());
    EXPECT_NE(preferences.data(preference_keys::statsDaily)->bytes(), damaged);
    const auto kept = support::namesIn(folder.path());
    ASSERT_EQ(kept.size(), 1u) << "what could not be read is set aside";
    EXPECT_TRUE(kept[0].ends_with("-Quillo.stats.daily")) << kept[0];
}

} // namespace
} // namespace quillo

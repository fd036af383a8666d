#include "review/ReviewPromptService.h"

#include "support/InMemoryKeyValueStore.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillo {
namespace {

using support::InMemoryPreferences;

class ReviewPromptServiceTest : public testing::Test {
protected:
    ReviewPromptService service(std::optional<std::string> version = "1.2") {
        return {preferences, notifications, std::move(version)};
    }
    std::optional<std::int64_t> count() const {
        return preferences.integer(preference_keys::reviewCompletions);
    }
    std::optional<std::string> promptedVersion() const {
        return preferences.text(preference_keys::reviewLastPromptedVersion);
    }
    void completeTimes(int times, std::optional<std::string> version = "1.2") {
        for (int time = 0; time < times; ++time)
            service(version).noteCompletion(); // A process each, as with commands.
    }

    InMemoryPreferences preferences;
    NotificationCenter notifications;
    int posts = 0;
    Connection listening = notifications.observe(notifications::shouldRequestReview, [this] { ++posts; });
};

TEST_F(ReviewPromptServiceTest, UsesThePublishedNames) {
    EXPECT_EQ(notifications::shouldRequestReview, "Quillo.ShouldRequestReview");
    EXPECT_EQ(preference_keys::reviewCompletions, "Quillo.review.lifetimeCompletions");
    EXPECT_EQ(preference_keys::reviewLastPromptedVersion, "Quillo.review.lastPromptedVersion");
}

TEST_F(ReviewPromptServiceTest, AsksOnTheFifthCompletionAndNeverAgain) {
    ReviewPromptService asking = service();
    for (int completion = 1; completion <= 20; ++completion) {
        asking.noteCompletion();
        EXPECT_EQ(posts, completion < 5 ? 0 : 1) << completion;
        EXPECT_EQ(count(), completion);
        EXPECT_EQ(promptedVersion(), completion < 5 ? std::nullopt : std::optional<std::string>("1.2"));
    }
}

TEST_F(ReviewPromptServiceTest, CountsAcrossProcesses) {
    completeTimes(4);
    EXPECT_EQ(posts, 0);
    completeTimes(1);
    EXPECT_EQ(posts, 1);
    completeTimes(10, "2.0");
    EXPECT_EQ(posts, 1) << "a new version does not ask again";
}

TEST_F(ReviewPromptServiceTest, AsksNotWhereThisVersionHasAskedBefore) {
    preferences.set(preference_keys::reviewLastPromptedVersion, std::string("1.2"));
    completeTimes(6);
    EXPECT_EQ(posts, 0);
    EXPECT_EQ(count(), 6);
    EXPECT_FALSE(service().takePendingRequest());
}

TEST_F(ReviewPromptServiceTest, AsksWhereAnotherVersionHasAskedBefore) {
    preferences.set(preference_keys::reviewLastPromptedVersion, std::string("1.1"));
    completeTimes(5);
    EXPECT_EQ(posts, 1);
    EXPECT_EQ(promptedVersion(), "1.2");
}

TEST_F(ReviewPromptServiceTest, WithoutAVersionIsVersionZero) {
    completeTimes(5, std::nullopt);
    EXPECT_EQ(posts, 1);
    EXPECT_EQ(promptedVersion(), "0");
}

TEST_F(ReviewPromptServiceTest, CountsOnFromWhateverIsStored) {
    preferences.set(preference_keys::reviewCompletions, std::int64_t{-2});
    completeTimes(1);
    EXPECT_EQ(count(), -1);
    preferences.set(preference_keys::reviewCompletions, std::string("four"));
    completeTimes(1);
    EXPECT_EQ(count(), 1) << "a value of another type counts as absent";
    const std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    preferences.set(preference_keys::reviewCompletions, largest - 1);
    completeTimes(3);
    EXPECT_EQ(count(), largest);
    EXPECT_EQ(posts, 0);
}

TEST_F(ReviewPromptServiceTest, WritesEachCompletionInOneGo) {
    completeTimes(4);
    EXPECT_EQ(preferences.writes(), 4);
    completeTimes(1);
    EXPECT_EQ(preferences.writes(), 5) << "count, version and request are there together or not at all";
}

TEST_F(ReviewPromptServiceTest, KeepsARequestThatNobodyHeardUntilItIsTaken) {
    listening.disconnect();
    completeTimes(4);
    EXPECT_FALSE(service().takePendingRequest());
    completeTimes(1);
    EXPECT_EQ(posts, 0);
    EXPECT_EQ(preferences.boolean("Quillo.linux.review.pending"), true);
    completeTimes(3);
    EXPECT_TRUE(service("2.0").takePendingRequest()) << "by another process, after an update";
    EXPECT_FALSE(service().takePendingRequest());
    EXPECT_EQ(preferences.value("Quillo.linux.review.pending"), std::nullopt);
}

TEST_F(ReviewPromptServiceTest, LetsWhoeverHearsThePostTakeTheRequest) {
    ReviewPromptService asking = service();
    int taken = 0;
    const Connection popover = notifications.observe(notifications::shouldRequestReview,
                                                     [&] { taken += asking.takePendingRequest(); });
    for (int completion = 0; completion < 6; ++completion)
        asking.noteCompletion();
    EXPECT_EQ(taken, 1);
    EXPECT_FALSE(asking.takePendingRequest()) << "not once more when the popover opens";
}

TEST_F(ReviewPromptServiceTest, TakesNoRequestThatIsNone) {
    preferences.set(preference_keys::reviewPending, std::string("yes"));
    EXPECT_FALSE(service().takePendingRequest());
    preferences.set(preference_keys::reviewPending, false);
    EXPECT_FALSE(service().takePendingRequest());
}

} // namespace
} // namespace quillo

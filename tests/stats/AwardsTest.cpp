#include "stats/Awards.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace quillo {
namespace {

using AwardList = std::vector<Award>;

/// A completion that deserves nothing.
constexpr CompletionFacts plain{3600, 12, 1};

AwardList forDuration(double seconds) {
    CompletionFacts facts = plain;
    facts.durationSeconds = seconds;
    return awardsFor(facts);
}
AwardList forHour(int hour) {
    CompletionFacts facts = plain;
    facts.hour = hour;
    return awardsFor(facts);
}
AwardList forStreak(std::int64_t days) {
    CompletionFacts facts = plain;
    facts.currentStreak = days;
    return awardsFor(facts);
}

TEST(Awards, HaveATitleAndASubtitleEach) {
    struct Row {
        Award award;
        std::string_view title;
        std::string_view subtitle;
    };
    const std::vector<Row> rows = {
        {Award::lightningFast, "Lightning Fast", "Done in under a minute"},
        {Award::quickDraw, "Quick Draw", "Done in under five"},
        {Award::longGame, "Long Game", "Patience pays off"},
        {Award::weekLongWinner, "Week-long Winner", "Seven days in a row"},
        {Award::monthlyMaven, "Monthly Maven", "Thirty days strong"},
        {Award::earlyBird, "Early Bird", "Crushed before 8 AM"},
        {Award::nightOwl, "Night Owl", "Burned the midnight oil"},
    };
    ASSERT_EQ(rows.size(), allAwards.size());
    for (std::size_t index = 0; index < rows.size(); ++index) {
        EXPECT_EQ(rows[index].award, allAwards[index]);
        EXPECT_EQ(titleOf(rows[index].award), rows[index].title);
        EXPECT_EQ(subtitleOf(rows[index].award), rows[index].subtitle);
    }
}

TEST(Awards, AreNotDeservedByAnOrdinaryCompletion) {
    EXPECT_EQ(awardsFor(plain), AwardList());
}

TEST(Awards, ForDurationsHaveStrictThresholds) {
    struct Row {
        double seconds;
        AwardList expected;
    };
    const AwardList both{Award::lightningFast, Award::quickDraw};
    for (const Row& row : std::vector<Row>{
             {-1e9, both},
             {-1, both},
             {0, both},
             {30, both},
             {59, both},
             {59.999, both},
             {60, {Award::quickDraw}},
             {60.001, {Award::quickDraw}},
             {299.999, {Award::quickDraw}},
             {300, {}},
             {300.001, {}},
             {604799, {}},
             {604800, {}},
             {604800.001, {Award::longGame}},
             {1e9, {Award::longGame}},
             {std::numeric_limits<double>::quiet_NaN(), {}},
         })
        EXPECT_EQ(forDuration(row.seconds), row.expected) << row.seconds;
}

TEST(Awards, ForHoursGoFromTenInTheEveningToEightInTheMorning) {
    for (int hour = 0; hour < 24; ++hour) {
        AwardList expected;
        if (hour <= 7)
            expected = {Award::earlyBird};
        if (hour >= 22)
            expected = {Award::nightOwl};
        EXPECT_EQ(forHour(hour), expected) << hour;
    }
}

TEST(Awards, ForStreaksComeWithTheSeventhAndTheThirtiethDay) {
    for (std::int64_t days = 0; days <= 60; ++days) {
        AwardList expected;
        if (days >= 7)
            expected.push_back(Award::weekLongWinner);
        if (days >= 30)
            expected.push_back(Award::monthlyMaven);
        EXPECT_EQ(forStreak(days), expected) << days;
    }
}

TEST(Awards, ComeTogetherInTheOrderOfTheirDeclaration) {
    EXPECT_EQ(awardsFor({30, 23, 30}),
              (AwardList{Award::lightningFast, Award::quickDraw, Award::weekLongWinner, Award::monthlyMaven,
                         Award::nightOwl}));
    EXPECT_EQ(awardsFor({604801, 7, 7}),
              (AwardList{Award::longGame, Award::weekLongWinner, Award::earlyBird}));
}

} // namespace
} // namespace quillo

#include "stats/Ranks.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace quillo {
namespace {

TEST(Ranks, HaveTheirThresholdsAndLines) {
    struct Row {
        std::int64_t completions;
        std::string_view rank;
        std::string_view line;
    };
    for (const Row& row : std::vector<Row>{
             {0, "Tadpole", "0 tasks completed · 5 more to reach Hopper"},
             {1, "Tadpole", "1 tasks completed · 4 more to reach Hopper"},
             {4, "Tadpole", "4 tasks completed · 1 more to reach Hopper"},
             {5, "Hopper", "5 tasks completed · 20 more to reach Leaper"},
             {24, "Hopper", "24 tasks completed · 1 more to reach Leaper"},
             {25, "Leaper", "25 tasks completed · 75 more to reach Bullfrog"},
             {99, "Leaper", "99 tasks completed · 1 more to reach Bullfrog"},
             {100, "Bullfrog", "100 tasks completed · 400 more to reach Croak Master"},
             {499, "Bullfrog", "499 tasks completed · 1 more to reach Croak Master"},
             {500, "Croak Master", "500 tasks completed · 500 more to reach Pondsmith"},
             {999, "Croak Master", "999 tasks completed · 1 more to reach Pondsmith"},
             {1000, "Pondsmith", "1000 tasks completed · top rank reached 👑"},
             {1001, "Pondsmith", "1001 tasks completed · top rank reached 👑"},
             {std::numeric_limits<std::int64_t>::max(), "Pondsmith",
              "9223372036854775807 tasks completed · top rank reached 👑"},
         }) {
        EXPECT_EQ(rankProgress(row.completions).current.title, row.rank) << row.completions;
        EXPECT_EQ(progressLine(row.completions), row.line);
    }
}

TEST(Ranks, TellTheProgressInPartsToo) {
    const RankProgress start = rankProgress(0);
    EXPECT_EQ(start.current.reachedAt, 1);
    ASSERT_TRUE(start.next);
    EXPECT_EQ(start.next->title, "Hopper");
    EXPECT_EQ(start.next->reachedAt, 5);
    EXPECT_EQ(start.missing, 5);

    const RankProgress top = rankProgress(1000);
    EXPECT_EQ(top.current.reachedAt, 1000);
    EXPECT_FALSE(top.next);
    EXPECT_EQ(top.missing, 0);
}

} // namespace
} // namespace quillo

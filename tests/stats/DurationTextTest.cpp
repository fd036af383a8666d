#include "stats/DurationText.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace quillo {
namespace {

TEST(DurationText, HasTheTwoLargestUnits) {
    struct Row {
        double seconds;
        std::string_view text;
    };
    const double infinity = std::numeric_limits<double>::infinity();
    for (const Row& row : std::vector<Row>{
             {0, "0s"},
             {0.999, "0s"},
             {42, "42s"},
             {42.9, "42s"},
             {59, "59s"},
             {59.999, "59s"},
             {60, "1m 0s"},
             {307, "5m 7s"},
             {3599, "59m 59s"},
             {3599.999, "59m 59s"},
             {3600, "1h 0m"},
             {11520, "3h 12m"},
             {11579, "3h 12m"},
             {86399, "23h 59m"},
             {86400, "1d 0h"},
             {187200, "2d 4h"},
             {190799, "2d 4h"},
             {864000, "10d 0h"},
             {-0.5, "0s"},
             {-5.5, "-5s"},
             {-86400, "-86400s"},
             {1e300, "106751991167300d 15h"},
             {infinity, "106751991167300d 15h"},
             {-infinity, "-9223372036854774784s"},
             {std::numeric_limits<double>::quiet_NaN(), "0s"},
         })
        EXPECT_EQ(durationText(row.seconds), row.text) << row.seconds;
}

TEST(StreakText, IsANumberOfDays) {
    EXPECT_EQ(streakText(0), "0d");
    EXPECT_EQ(streakText(3), "3d");
    EXPECT_EQ(streakText(60), "60d");
}

} // namespace
} // namespace quillo

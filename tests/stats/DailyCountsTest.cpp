#include "stats/DailyCounts.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace quillo {
namespace {

TEST(DailyCounts, AreStoredAsAnObject) {
    EXPECT_EQ(encodeDailyCounts({}), "{}");
    EXPECT_EQ(encodeDailyCounts({{"2025-03-05", 3}, {"2025-01-31", 1}}),
              R"({"2025-01-31":1,"2025-03-05":3})");
    EXPECT_EQ(decodeDailyCounts("{}"), DailyCounts());
    EXPECT_EQ(decodeDailyCounts(R"( {"2025-03-05" : 3, "2025-01-31":0, "2025-03-05":4} )"),
              (DailyCounts{{"2025-01-31", 0}, {"2025-03-05", 4}}));
    EXPECT_EQ(decodeDailyCounts(R"({"2025-03-05":9223372036854775807})"),
              (DailyCounts{{"2025-03-05", std::numeric_limits<std::int64_t>::max()}}));
    EXPECT_EQ(decodeDailyCounts(R"({"some day":3})"), (DailyCounts{{"some day", 3}}));
}

TEST(DailyCounts, AreAbsentWhereAnythingIsWrong) {
    for (const std::string& bytes : std::vector<std::string>{
             "", "null", "[]", "3", "{", R"({"2025-03-05":3)", R"({"2025-03-05":3,})", R"({"2025-03-05":3}})",
             R"({"2025-03-05":-1})", R"({"2025-03-05":3.5})", R"({"2025-03-05":"3"})",
             R"({"2025-03-05":null})", R"({"2025-03-05":true})", R"({"2025-03-05":{}})",
             R"({"2025-03-05":9223372036854775808})", R"({"2025-03-05":99999999999999999999})",
             R"({"2025-03-05":3,"2025-03-06":[]})", R"({2025:3})", "{\"\xFF\":3}"})
        EXPECT_FALSE(decodeDailyCounts(bytes)) << bytes;
    EXPECT_TRUE(decodeDailyCounts(R"({"2025-03-05":3})"));
}

TEST(DailyCounts, HaveALargestSizeBothWays) {
    DailyCounts counts{{std::string(largestStoredCounts - 6, 'k'), 1}};
    const auto bytes = encodeDailyCounts(counts);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), largestStoredCounts);
    EXPECT_EQ(decodeDailyCounts(*bytes), counts);
    EXPECT_FALSE(decodeDailyCounts(*bytes + ' '));
    counts.begin()->second = 10;
    EXPECT_FALSE(encodeDailyCounts(counts));
}

RC_GTEST_PROP(DailyCountsProperty, ReadBackEqual, ()) {
    const auto counts = *rc::gen::container<std::map<std::string, std::int64_t>>(
        rc::gen::container<std::string>(rc::gen::inRange('\x01', '\x7F')),
        rc::gen::map(rc::gen::arbitrary<std::int64_t>(),
                     [](std::int64_t any) { return any & std::numeric_limits<std::int64_t>::max(); }));
    const DailyCounts all(counts.begin(), counts.end());
    const auto bytes = encodeDailyCounts(all);
    RC_ASSERT(bytes.has_value());
    RC_ASSERT(decodeDailyCounts(*bytes) == all);
}

} // namespace
} // namespace quillo

#include "model/Award.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillo {
namespace {

using Awards = std::set<Award>;

TEST(Award, HasARawValueEach) {
    const std::vector<std::string_view> expected = {
        "lightningFast", "quickDraw", "longGame", "weekLongWinner", "monthlyMaven", "earlyBird", "nightOwl"};
    ASSERT_EQ(allAwards.size(), expected.size());
    for (std::size_t index = 0; index < expected.size(); ++index) {
        EXPECT_EQ(rawValue(allAwards[index]), expected[index]);
        EXPECT_EQ(awardNamed(expected[index]), allAwards[index]);
    }
    for (const std::string_view unknown : {"", "LightningFast", "lightningFast ", "earlyBirds"})
        EXPECT_FALSE(awardNamed(unknown)) << unknown;
}

TEST(Award, IsStoredInAnArrayOfRawValues) {
    EXPECT_EQ(encodeAwards({}), "[]");
    EXPECT_EQ(encodeAwards({Award::nightOwl, Award::quickDraw}), R"(["quickDraw","nightOwl"])");
    EXPECT_EQ(decodeAwards("[]"), Awards());
    EXPECT_EQ(decodeAwards(R"( [ "nightOwl" , "\u0071uickDraw", "nightOwl" ] )"),
              (Awards{Award::nightOwl, Award::quickDraw}));
}

TEST(Award, EverySetOfThemReadsBack) {
    for (unsigned chosen = 0; chosen < 1U << allAwards.size(); ++chosen) {
        Awards awards;
        for (std::size_t index = 0; index < allAwards.size(); ++index) {
            if (chosen >> index & 1U)
                awards.insert(allAwards[index]);
        }
        EXPECT_EQ(decodeAwards(encodeAwards(awards)), awards) << encodeAwards(awards);
    }
}

TEST(Award, IsAbsentWithAllOthersWhereAnythingIsWrong) {
    for (const std::string& bytes :
         std::vector<std::string>{"", "null", "{}", "\"nightOwl\"", "[", "[\"nightOwl\"", "[\"nightOwl\",]",
                                  "[\"nightOwl\"]]", "[\"nightOwl\",\"frogKing\"]", "[\"nightOwl\",null]",
                                  "[\"nightOwl\",3]", "[[\"nightOwl\"]]", "[\"nightOwl\xFF\"]"})
        EXPECT_FALSE(decodeAwards(bytes)) << bytes;
    EXPECT_TRUE(decodeAwards("[\"nightOwl\"]" + std::string(4000, ' ')));
    EXPECT_FALSE(decodeAwards("[\"nightOwl\"]" + std::string(5000, ' ')));
}

} // namespace
} // namespace quillo

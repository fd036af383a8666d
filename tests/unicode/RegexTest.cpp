#include "unicode/Regex.h"

#include <gtest/gtest.h>

#include <string>

namespace quillo::unicode {
namespace {

TEST(Regex, FindsTheFirstMatchAndItsGroups) {
    const Regex regex(u"(\\d+)\\s+(am|pm)?(x)?", Regex::Case::Sensitive);
    const auto match = regex.search(u"at 12 pm or 13 am");
    ASSERT_TRUE(match);
    EXPECT_EQ(match->range(), (TextRange{3, 8}));
    EXPECT_EQ(match->group(0), u"12 pm");
    EXPECT_EQ(match->group(1), u"12");
    EXPECT_EQ(match->group(2), u"pm");
    EXPECT_EQ(match->group(3), u"");
}

TEST(Regex, CanBeSearchedAgain) {
    const Regex regex(u"a", Regex::Case::Sensitive);
    EXPECT_TRUE(regex.search(u"cat"));
    EXPECT_FALSE(regex.search(u"dog"));
    EXPECT_FALSE(regex.search(u""));
    EXPECT_TRUE(regex.search(u"cat"));
}

TEST(Regex, IgnoresCaseWhereAsked) {
    EXPECT_FALSE(Regex(u"noon", Regex::Case::Sensitive).search(u"NOON"));
    EXPECT_TRUE(Regex(u"noon", Regex::Case::Insensitive).search(u"NOON"));
}

TEST(Regex, APatternThatDoesNotCompileMatchesNothing) {
    EXPECT_FALSE(Regex(u"(", Regex::Case::Sensitive).search(u"("));
    EXPECT_FALSE(
        Regex(u"(a)(b)(c)(d)(e)", Regex::Case::Sensitive).search(u"abcde")); // more groups than it keeps
}

TEST(Regex, SurvivesEnormousTexts) {
    const std::u16string digits(1'000'000, u'7');
    EXPECT_FALSE(Regex(u"\\b(\\d+)\\s+days\\b", Regex::Case::Sensitive).search(digits));
    const std::u16string blanks(1'000'000, u' ');
    EXPECT_FALSE(Regex(u"\\bin\\s+(\\d+)", Regex::Case::Sensitive).search(u"in" + blanks));
}

} // namespace
} // namespace quillo::unicode

#include "unicode/Text.h"

#include "unicode/Regex.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace quillo::unicode {
namespace {

TEST(Text, ReplacesMalformedUtf8) {
    EXPECT_EQ(toUtf16("a\xFFz"), u"a\uFFFDz");
    EXPECT_EQ(toUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD"); // a surrogate has no place in UTF-8
    EXPECT_EQ(toUtf16("\xF0\x9F\x98"), u"\uFFFD");             // cut short
    EXPECT_FALSE(isWellFormed("\xC0\x80"));
    EXPECT_TRUE(isWellFormed("na\u00efve \U0001F438"));
}

TEST(Text, ReplacesLoneSurrogates) {
    const char16_t lone[] = {u'a', 0xD83D, u'b', 0xDE00, 0};
    EXPECT_EQ(toUtf8(lone), "a\uFFFDb\uFFFD");
    EXPECT_EQ(toUtf8(u"\U0001F438"), "\U0001F438");
}

RC_GTEST_PROP(Text, Utf16AndBackKeepsWellFormedText, (const std::string& bytes)) {
    const std::string wellFormed = toUtf8(toUtf16(bytes));
    RC_ASSERT(isWellFormed(wellFormed));
    RC_ASSERT(toUtf8(toUtf16(wellFormed)) == wellFormed);
    if (isWellFormed(bytes))
        RC_ASSERT(wellFormed == bytes);
}

TEST(Text, CountsCharactersHoweverManyBytesTheyTake) {
    EXPECT_EQ(characterCount(""), 0u);
    EXPECT_EQ(characterCount("na\u00efve \u5927 \U0001F438"), 9u);
}

TEST(Text, TrimsEveryKindOfWhiteSpace) {
    EXPECT_EQ(trim(u" \t\n\u00A0\u2003\u3000 a b \u0085\r\n"), u"a b");
    EXPECT_EQ(trim(u"\u200B a"), u"\u200B a"); // a zero-width space is not white space
    EXPECT_EQ(trim(u"   "), u"");
    EXPECT_EQ(trim(u""), u"");
}

TEST(Text, LowersByNoParticularLanguage) {
    EXPECT_EQ(lower(u"TODAY Äß"), u"today äß");
    EXPECT_EQ(lower(u"TITLE"), u"title");    // not the dotless i, whatever the user's locale
    EXPECT_EQ(lower(u"\u0130"), u"i\u0307"); // grows
    EXPECT_EQ(lower(u"\u212A"), u"k");
    EXPECT_EQ(lower(u""), u"");
}

TEST(Text, CollapsesRunsOfWhiteSpace) {
    EXPECT_EQ(collapseWhiteSpace(u"a \t\u00A0 b\n\nc"), u"a b c");
    EXPECT_EQ(collapseWhiteSpace(u"  "), u" ");
}

TEST(Text, WhiteSpaceIsWhatPatternsTakeForIt) {
    const Regex space(u"\\s", Regex::Case::Sensitive);
    for (char32_t character = 0; character < 0x10000; ++character) {
        if (character >= 0xD800 && character < 0xE000)
            continue;
        const char16_t unit = static_cast<char16_t>(character);
        EXPECT_EQ(isWhiteSpace(character), space.search({&unit, 1}).has_value())
            << static_cast<unsigned>(character);
    }
}

TEST(Text, MeasuresColumns) {
    EXPECT_EQ(displayWidth("abc"), 3);
    EXPECT_EQ(displayWidth("日本"), 4);
    EXPECT_EQ(displayWidth("🐸"), 2);
    EXPECT_EQ(displayWidth("e\u0301"), 1);
    EXPECT_EQ(displayWidth("a\u200Db"), 2);
    EXPECT_EQ(displayWidth(""), 0);
}

TEST(Text, FitsWithoutCuttingCharacters) {
    EXPECT_EQ(fitToWidth("abcdef", 3), "abc");
    EXPECT_EQ(fitToWidth("日本語", 5), "日本");
    EXPECT_EQ(fitToWidth("e\u0301a", 1), "e\u0301");
    EXPECT_EQ(fitToWidth("abc", 10), "abc");
    EXPECT_EQ(fitToWidth("abc", 0), "");
}

} // namespace
} // namespace quillo::unicode

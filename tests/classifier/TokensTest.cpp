#include "classifier/Tokens.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace quillo::classifier {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> pieces(const std::string& text) {
    std::vector<std::string> found;
    for (const Token& token : tokenize(text))
        found.push_back(text.substr(token.start, token.end - token.start));
    return found;
}

TEST(Tokens, AreRunsOfLettersRunsOfDigitsAndSingleMarks) {
    EXPECT_THAT(pieces("call mom 9p"), ElementsAre("call", "mom", "9", "p"));
    EXPECT_THAT(pieces("9:30pm"), ElementsAre("9", ":", "30", "pm"));
    EXPECT_THAT(pieces("(5/12)!!"), ElementsAre("(", "5", "/", "12", ")", "!", "!"));
}

TEST(Tokens, BlanksBelongToNone) {
    EXPECT_THAT(pieces(""), IsEmpty());
    EXPECT_THAT(pieces(" \t\n\u00A0\u2003\u3000"), IsEmpty());
    EXPECT_THAT(pieces("\u00A0a\u202Fb "), ElementsAre("a", "b"));
}

TEST(Tokens, AnApostropheBetweenLettersIsOneOfThem) {
    EXPECT_THAT(pieces("don't o’clock"), ElementsAre("don't", "o’clock"));
    EXPECT_THAT(pieces("kids' 'quoted'"), ElementsAre("kids", "'", "'", "quoted", "'"));
}

TEST(Tokens, LettersBeyondAsciiAreLetters) {
    EXPECT_THAT(pieces("Café Übung 日本語"), ElementsAre("Café", "Übung", "日本語"));
    EXPECT_THAT(pieces("🎂cake"), ElementsAre("🎂", "cake"));
    EXPECT_THAT(pieces("a–b…"), ElementsAre("a", "–", "b", "…"));
}

TEST(Tokens, WordsAreInLowerCase) {
    EXPECT_EQ(tokenize("TmRw")[0].word, U"tmrw");
    EXPECT_EQ(tokenize("ÜBER")[0].word, U"Über"); // ASCII letters only
}

TEST(Tokens, MalformedBytesAreMarks) {
    EXPECT_THAT(pieces("a\x80z"), ElementsAre("a", "\x80", "z"));
    EXPECT_THAT(pieces("\xF0\x9F\x8E"), ElementsAre("\xF0", "\x9F", "\x8E"));
    EXPECT_THAT(pieces("\xC3"), ElementsAre("\xC3"));
}

} // namespace
} // namespace quillo::classifier

#include "classifier/Lexicon.h"

#include <gtest/gtest.h>

namespace quillo::classifier {
namespace {

const Lexicon lexicon({"tomorrow", "monday", "sunday", "mon", "march", "wednesday"});

void expectLike(std::u32string_view word, std::size_t place, std::size_t edits) {
    const Likeness likeness = lexicon.look(word);
    EXPECT_EQ(likeness.word, place);
    EXPECT_EQ(likeness.edits, edits);
}

TEST(Lexicon, FindsItsWords) {
    expectLike(U"tomorrow", 1, 0);
    expectLike(U"mon", 4, 0);
}

TEST(Lexicon, FindsThemMisspelt) {
    expectLike(U"tomorow", 1, 1);   // one missing
    expectLike(U"tommorow", 1, 2);  // one too many, one missing
    expectLike(U"tmoorrow", 1, 1);  // two swapped
    expectLike(U"wendesday", 6, 1); // a swap
    expectLike(U"wensday", 6, 2);
    expectLike(U"munday", 2, 1); // and not Sunday, which is as near: the first counts
    expectLike(U"manday", 2, 1);
}

TEST(Lexicon, ShortWordsMayHaveFewerSlips) {
    expectLike(U"mno", 0, 3);
    expectLike(U"mach", 5, 1);
    expectLike(U"mah", 0, 3);
    expectLike(U"mach", 5, 1);
    expectLike(U"mrhc", 0, 3);
}

TEST(Lexicon, FindsNothingLikeOtherWords) {
    expectLike(U"groceries", 0, 3);
    expectLike(U"", 0, 3);
    expectLike(std::u32string(1000, U'm'), 0, 3);
    expectLike(U"größe", 0, 3);
}

} // namespace
} // namespace quillo::classifier

#include "classifier/Features.h"

#include <algorithm>

namespace quillo::classifier {

namespace {

constexpr std::size_t shownFirst = 8;
constexpr std::size_t shownLast = 4;
static_assert(shownFirst + shownLast == tokenCharacters);

std::vector<std::size_t> charactersOf(const Weights& weights, std::u32string_view word) {
    std::u32string shown(word);
    if (shown.size() > tokenCharacters)
        shown.erase(shownFirst, shown.size() - tokenCharacters);
    std::vector<std::size_t> rows;
    for (const char32_t c : shown) {
        const auto known = weights.characters.find(c);
        rows.push_back(known == weights.characters.end() ? 1 : known->second);
    }
    return rows;
}

/// What a run of digits may be.
std::size_t valueOf(std::u32string_view word) {
    if (!isDigit(word.front()))
        return NoNumber;
    if (word.size() > 4)
        return LongNumber;
    std::size_t value = 0;
    for (const char32_t digit : word)
        value = value * 10 + (digit - U'0');
    if (word.size() <= 2)
        return value;
    if (word.size() == 4 && value >= 1900 && value < 2100)
        return Year;
    return value / 100 <= 23 && value % 100 < 60 ? Clock : OtherNumber;
}

} // namespace

Features featuresOf(const Weights& weights, std::string_view text, const std::vector<Token>& tokens,
                    std::size_t place) {
    const Token& token = tokens[place];
    const Likeness likeness = isLetter(token.word.front()) ? weights.lexicon.look(token.word) : Likeness{};
    const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
    const auto isSmall = [](char c) { return c >= 'a' && c <= 'z'; };
    const std::string_view original = text.substr(token.start, token.end - token.start);
    const auto capitals = std::count_if(original.begin(), original.end(), isCapital);
    return {
        .characters = charactersOf(weights, token.word),
        .value = valueOf(token.word),
        .word = likeness.word,
        .flags =
            {
                place == 0 || tokens[place - 1].end < token.start,                // a blank before it
                place + 1 < tokens.size() && tokens[place + 1].start > token.end, // and behind it
                isCapital(original.front()),
                capitals > 1 && std::none_of(original.begin(), original.end(), isSmall),
                original.front() == '0' && original.size() > 1,
                place == 0,
                place + 1 == tokens.size(),
                likeness.edits == 0,
                likeness.edits == 1,
                likeness.edits == 2,
            },
    };
}

} // namespace quillo::classifier

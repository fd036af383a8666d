#include "classifier/Tokens.h"

namespace quillo::classifier {

namespace {

struct Character {
    char32_t code = 0;
    std::size_t length = 1; ///< in bytes
};

constexpr char32_t malformed = 0xFFFD;

/// The character that begins at `at`.
Character characterAt(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(at);
    if (first < 0x80)
        return {first, 1};
    const std::size_t length = first >= 0xF0 && first < 0xF5   ? 4
                               : first >= 0xE0 && first < 0xF0 ? 3
                               : first >= 0xC2 && first < 0xE0 ? 2
                                                               : 0;
    if (length == 0 || at + length > text.size())
        return {malformed, 1};
    char32_t code = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return {malformed, 1};
        code = (code << 6) | (byte(at + i) & 0x3FU);
    }
    return {code, length};
}

constexpr bool isBlank(char32_t c) {
    return c == U' ' || (c >= 0x9 && c <= 0xD) || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
           c == 0x3000;
}

constexpr bool isApostrophe(char32_t c) {
    return c == U'\'' || c == 0x2019;
}

constexpr bool isCapital(char32_t c) {
    return c >= U'A' && c <= U'Z';
}

constexpr char32_t lower(char32_t c) {
    return isCapital(c) ? c + (U'a' - U'A') : c;
}

} // namespace

bool isLetter(char32_t c) {
    if (c < 0x80)
        return (c >= U'a' && c <= U'z') || isCapital(c);
    return c >= 0xC0 && c != 0xD7 && c != 0xF7 && !(c >= 0x2000 && c < 0x2C00) &&
           !(c >= 0x3000 && c < 0x3040) && !(c >= 0xFE00 && c < 0xFE10) && c != 0xFEFF && c != malformed &&
           c < 0x1F000;
}

std::vector<Token> tokenize(std::string_view text) {
    std::vector<Token> tokens;
    std::size_t at = 0;
    while (at < text.size()) {
        const Character first = characterAt(text, at);
        if (isBlank(first.code)) {
            at += first.length;
            continue;
        }
        Token token{at, at + first.length, std::u32string(1, lower(first.code))};
        const bool digits = isDigit(first.code);
        while ((digits || isLetter(first.code)) && token.end < text.size()) {
            const Character next = characterAt(text, token.end);
            bool belongs = digits ? isDigit(next.code) : isLetter(next.code);
            if (!digits && isApostrophe(next.code) && token.end + next.length < text.size())
                belongs = isLetter(characterAt(text, token.end + next.length).code);
            if (!belongs)
                break;
            token.end += next.length;
            token.word += lower(next.code);
        }
        at = token.end;
        tokens.push_back(std::move(token));
    }
    return tokens;
}

} // namespace quillo::classifier

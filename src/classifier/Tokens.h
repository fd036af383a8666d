/// A text as the network sees it: runs of letters, runs of digits and single marks.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillo::classifier {

struct Token {
    std::size_t start = 0; ///< its place in the text, in bytes
    std::size_t end = 0;
    std::u32string word; ///< ASCII letters in lower case
};

/// `text` is UTF-8; a malformed byte is a mark of its own. Blanks belong to no token. An apostrophe between
/// letters is one of them; beyond ASCII everything is a letter but blanks, marks and pictures.
std::vector<Token> tokenize(std::string_view text);

constexpr bool isDigit(char32_t c) {
    return c >= U'0' && c <= U'9';
}

bool isLetter(char32_t c);

} // namespace quillo::classifier

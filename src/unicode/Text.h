/// Text as Unicode sees it: encodings, white space, lower case, width on a terminal.
///
/// Text is UTF-8 where it is kept and UTF-16 where patterns search it, so that places are the code units that
/// ICU counts. All functions may be called from any thread.
#pragma once

#include <string>
#include <string_view>

namespace quillo::unicode {

/// Places in a UTF-16 text, in code units: from `start` up to, not including, `end`.
struct TextRange {
    std::size_t start = 0;
    std::size_t end = 0;

    friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// UTF-8 to UTF-16. Each malformed sequence becomes one U+FFFD.
std::u16string toUtf16(std::string_view utf8);

/// UTF-16 to UTF-8. A surrogate without its other half becomes U+FFFD.
std::string toUtf8(std::u16string_view utf16);

/// Whether the text is well-formed UTF-8.
bool isWellFormed(std::string_view utf8);

/// How many characters (code points) well-formed UTF-8 has.
std::size_t characterCount(std::string_view utf8);

/// Whether a character has the Unicode property White_Space; the same set that \s matches in a pattern.
bool isWhiteSpace(char32_t character);

/// The text without the white space (line ends included) at both ends.
std::u16string_view trim(std::u16string_view text);

/// Whether there is nothing but white space in the text.
bool isBlank(std::string_view utf8);

/// Lower case by the rules of no particular language.
std::u16string lower(std::u16string_view text);

/// Every run of white space replaced by one blank.
std::u16string collapseWhiteSpace(std::u16string_view text);

/// How many columns the text takes on a terminal: 0 for marks and invisible characters, 2 for wide East Asian
/// characters and emoji, else 1. Malformed UTF-8 counts as the U+FFFD it is shown as.
int displayWidth(std::string_view utf8);

/// The longest beginning of the text that takes at most `columns` columns.
std::string_view fitToWidth(std::string_view utf8, int columns);

} // namespace quillo::unicode

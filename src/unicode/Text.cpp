#include "unicode/Text.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace quillo::unicode {

namespace {

bool isAscii(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

int columnsOf(UChar32 character) {
    switch (u_charType(character)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
    case U_CONTROL_CHAR:
        return 0;
    default:
        break;
    }
    switch (u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH)) {
    case U_EA_FULLWIDTH:
    case U_EA_WIDE:
        return 2;
    default:
        return 1;
    }
}

} // namespace

std::u16string toUtf16(std::string_view utf8) {
    std::u16string utf16;
    utf16.reserve(utf8.size());
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    const auto length = static_cast<std::int64_t>(utf8.size());
    for (std::int64_t at = 0; at < length;) {
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(bytes, at, length, character);
        if (U_IS_BMP(character)) {
            utf16.push_back(static_cast<char16_t>(character));
        } else {
            utf16.push_back(U16_LEAD(character));
            utf16.push_back(U16_TRAIL(character));
        }
    }
    return utf16;
}

std::string toUtf8(std::u16string_view utf16) {
    std::string utf8;
    utf8.reserve(utf16.size());
    for (std::size_t at = 0; at < utf16.size();) {
        UChar32 character = 0;
        U16_NEXT_OR_FFFD(utf16.data(), at, utf16.size(), character);
        std::uint8_t bytes[U8_MAX_LENGTH];
        std::int32_t count = 0;
        U8_APPEND_UNSAFE(bytes, count, character);
        utf8.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    }
    return utf8;
}

bool isWellFormed(std::string_view utf8) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    const auto length = static_cast<std::int64_t>(utf8.size());
    for (std::int64_t at = 0; at < length;) {
        UChar32 character = 0;
        U8_NEXT(bytes, at, length, character);
        if (character < 0)
            return false;
    }
    return true;
}

std::size_t characterCount(std::string_view utf8) {
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char byte) { return !U8_IS_TRAIL(byte); }));
}

bool isWhiteSpace(char32_t character) {
    if (character < 0x80) // OPTIMIZATION: most characters are, and asking ICU is dearer.
        return character == U' ' || (character >= U'\t' && character <= U'\r');
    return u_isUWhiteSpace(static_cast<UChar32>(character));
}

// No character beyond the Basic Multilingual Plane is white space, so code units can be looked at one by one.
std::u16string_view trim(std::u16string_view text) {
    while (!text.empty() && isWhiteSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isWhiteSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

bool isBlank(std::string_view utf8) {
    return trim(toUtf16(utf8)).empty();
}

std::u16string lower(std::u16string_view text) {
    std::u16string lowered(text);
    if (isAscii(text)) {
        for (char16_t& unit : lowered) {
            if (unit >= u'A' && unit <= u'Z')
                unit = static_cast<char16_t>(unit + (u'a' - u'A'));
        }
        return lowered;
    }
    // Lower case can be longer than the text: one call tells how long, a second one fills.
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const std::int32_t length =
            u_strToLower(lowered.data(), static_cast<std::int32_t>(lowered.size()), text.data(),
                         static_cast<std::int32_t>(text.size()), /*root locale*/ "", &status);
        const bool fits = status != U_BUFFER_OVERFLOW_ERROR;
        lowered.resize(static_cast<std::size_t>(length));
        if (fits)
            return lowered;
    }
}

std::u16string collapseWhiteSpace(std::u16string_view text) {
    std::u16string collapsed;
    collapsed.reserve(text.size());
    bool inRun = false;
    for (const char16_t unit : text) {
        const bool white = isWhiteSpace(unit);
        if (!white)
            collapsed.push_back(unit);
        else if (!inRun)
            collapsed.push_back(u' ');
        inRun = white;
    }
    return collapsed;
}

int displayWidth(std::string_view utf8) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    const auto length = static_cast<std::int64_t>(utf8.size());
    int columns = 0;
    for (std::int64_t at = 0; at < length;) {
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(bytes, at, length, character);
        columns += columnsOf(character);
    }
    return columns;
}

std::string_view fitToWidth(std::string_view utf8, int columns) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    const auto length = static_cast<std::int64_t>(utf8.size());
    std::int64_t fitting = 0;
    for (std::int64_t at = 0; at < length; fitting = at) {
        UChar32 character = 0;
        U8_NEXT_OR_FFFD(bytes, at, length, character);
        columns -= columnsOf(character);
        if (columns < 0)
            break;
    }
    return utf8.substr(0, static_cast<std::size_t>(fitting));
}

} // namespace quillo::unicode

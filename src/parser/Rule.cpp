#include "parser/Rule.h"

#include "unicode/Text.h"

#include <algorithm>
#include <limits>

namespace quillo {

bool isPlain(std::u16string_view match) {
    return std::all_of(match.begin(), match.end(),
                       [](char16_t unit) { return unit < 0x80 || unicode::isWhiteSpace(unit); });
}

std::optional<std::int64_t> number(std::u16string_view digits) {
    constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
    if (digits.empty())
        return std::nullopt;
    std::int64_t value = 0;
    for (const char16_t unit : digits) {
        const int digit = unit - u'0';
        if (digit < 0 || digit > 9 || value > (largest - digit) / 10)
            return std::nullopt;
        value = value * 10 + digit;
    }
    return value;
}

bool startsWithWord(std::u16string_view word, std::u16string_view expected) {
    const auto lowered = [](char16_t unit) {
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
    };
    return word.size() >= expected.size() &&
           std::equal(expected.begin(), expected.end(), word.begin(),
                      [&](char16_t wanted, char16_t unit) { return wanted == lowered(unit); });
}

bool isWord(std::u16string_view word, std::u16string_view expected) {
    return word.size() == expected.size() && startsWithWord(word, expected);
}

std::optional<int> weekdayNumber(std::u16string_view name) {
    constexpr std::u16string_view weekdays[] = {u"sunday",   u"monday", u"tuesday", u"wednesday",
                                                u"thursday", u"friday", u"saturday"};
    for (int index = 0; index < 7; ++index) {
        if (isWord(name, weekdays[index]))
            return index + 1;
    }
    return std::nullopt;
}

std::optional<int> monthNumber(std::u16string_view name) {
    constexpr std::u16string_view months[] = {u"january",   u"february", u"march",    u"april",
                                              u"may",       u"june",     u"july",     u"august",
                                              u"september", u"october",  u"november", u"december"};
    for (int index = 0; index < 12; ++index) {
        if (isWord(name, months[index]) || isWord(name, months[index].substr(0, 3)))
            return index + 1;
    }
    return std::nullopt;
}

} // namespace quillo

/// The words by which a text is screened before any pattern is tried.
///
/// Patterns are dear, words are cheap: one pass over the lower-cased text notes which words of the vocabulary
/// occur in it, be it inside other words. A pattern that cannot match without a word that is not there need
/// not be run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace quillo {

/// Lower case; blanks are part of a word and stand for themselves.
// clang-format off
inline constexpr std::array<std::u16string_view, 83> vocabulary = {
    // Words that hint at a time.
    u"today", u"tomorrow", u"tonight", u"tomorow", u"tmrw", u"morning", u"afternoon", u"evening", u"night",
    u"noon", u"midnight", u"monday", u"tuesday", u"wednesday", u"thursday", u"friday", u"saturday",
    u"sunday", u" mon ", u" tue ", u" wed ", u" thu ", u" fri ", u" sat ", u" sun ", u"next week",
    u"next month", u"this week", u"this evening", u"later", u"asap", u"weekend", u"soon", u"from now",
    u"from tomorrow", u"from today", u"after tomorrow", u"christmas", u"thanksgiving", u"new year",
    u" a couple", u" a few", u"couple of", u"few minutes", u"few hours", u"first thing", u"end of",
    u"early", u"late tonight", u"late tomorrow", u"by tomorrow", u"by today", u"by morning", u"by noon",
    u"by tonight", u"around ", u"about an hour", u"about a",
    // Months, by the abbreviation that begins them.
    u"jan", u"feb", u"mar", u"apr", u"may", u"jun", u"jul", u"aug", u"sep", u"oct", u"nov", u"dec",
    // No hints themselves, but patterns need them.
    u"in", u"at", u"am", u"pm", u"the", u"from", u"min", u"hr", u"hour", u"day", u"week", u"month", u"/",
};
// clang-format on

/// The words that hint at a time come first.
inline constexpr std::size_t hintWordCount = 70;
static_assert(vocabulary[hintWordCount - 1] == u"dec");

/// A set of words of the vocabulary.
class Words {
public:
    constexpr Words() = default;

    /// Every word must be in the vocabulary; where it is not, a constant does not compile.
    constexpr Words(std::initializer_list<std::u16string_view> words) {
        for (const std::u16string_view word : words)
            insert(placeOf(word));
    }

    /// The first words of the vocabulary.
    static constexpr Words first(std::size_t count) {
        Words words;
        for (std::size_t place = 0; place < count; ++place)
            words.insert(place);
        return words;
    }

    constexpr void insert(std::size_t place) { bits_[place / 64] |= std::uint64_t{1} << (place % 64); }
    constexpr void insert(const Words& others) {
        bits_[0] |= others.bits_[0];
        bits_[1] |= others.bits_[1];
    }
    constexpr bool intersects(const Words& others) const {
        return ((bits_[0] & others.bits_[0]) | (bits_[1] & others.bits_[1])) != 0;
    }
    constexpr bool empty() const { return (bits_[0] | bits_[1]) == 0; }

private:
    static_assert(vocabulary.size() <= 128);

    static constexpr std::size_t placeOf(std::u16string_view word) {
        std::size_t place = 0;
        while (vocabulary.at(place) != word)
            ++place;
        return place;
    }

    std::array<std::uint64_t, 2> bits_{};
};

/// What one pass over a text saw.
struct Sightings {
    Words words;        ///< every word of the vocabulary that occurs
    bool digit = false; ///< there is a digit; said as well where other scripts' digits could be

    /// Whether something can match that needs one of `anyOf` (none named: no word is needed), one of
    /// `andAnyOf` likewise, and, if `needsDigit`, a digit.
    constexpr bool allow(const Words& anyOf, const Words& andAnyOf, bool needsDigit) const {
        return (anyOf.empty() || words.intersects(anyOf)) &&
               (andAnyOf.empty() || words.intersects(andAnyOf)) && (digit || !needsDigit);
    }
};

/// Looks at a lower-cased text once.
Sightings look(std::u16string_view loweredText);

} // namespace quillo

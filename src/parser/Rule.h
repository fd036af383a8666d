/// What a rule is: a name, a pattern, and what a match of it means.
#pragma once

#include "base/Instant.h"
#include "parser/Pattern.h"
#include "parser/Trace.h"
#include "unicode/CivilCalendar.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace quillo {

/// What a text is understood against.
struct Reference {
    Instant now;
    const unicode::CivilCalendar& calendar;
    bool evening = false; ///< the text speaks of an evening or a night
};

/// The meaning of a phrase that names a clock time.
using unicode::ClockTime;

/// The meaning of a phrase that names a day.
struct DayFound {
    Instant day; ///< any instant of that day
    std::optional<ClockTime>
        time;             ///< set by offsets, which keep the clock time unless the text names another
    bool tonight = false; ///< the evening of that day, unless the text says when
};

/// One way to say something, for example "in 2 hours". Found is what it yields: ClockTime or DayFound.
template <class Found>
struct Rule {
    std::string_view name;
    Pattern pattern;

    /// What a match means; absent where the numbers in it mean nothing ("at 2460").
    std::optional<Found> (*meaning)(const unicode::RegexMatch&, const Reference&);
};

/// The ways to say one kind of thing. They are tried in order; the first that yields something wins.
template <class Found>
struct Family {
    std::string_view name;
    std::span<const Rule<Found>> rules;
};

/// A text on its way through the rules.
struct Subject {
    std::u16string_view text;
    const Sightings& sightings; ///< of the text in lower case
    Trace* trace = nullptr;     ///< where to note what matched, if anybody wants to know
};

/// What a phrase means and where it stands.
template <class Found>
struct Phrase {
    Found found;
    unicode::TextRange range;
};

/// Whether a match is made of the characters that its pattern shows: ASCII, apart from white space. Digits of
/// other scripts and letters that only case folding makes equal (the long s, the Kelvin sign) match patterns
/// as well, but are no words or numbers that the rules know.
bool isPlain(std::u16string_view match);

/// The first match of each pattern is looked at, no further one.
template <class Found>
std::optional<Phrase<Found>> understand(const Family<Found>& family, const Subject& subject,
                                        const Reference& reference) {
    for (const Rule<Found>& rule : family.rules) {
        const auto match = rule.pattern.search(subject.text, subject.sightings);
        if (!match || !isPlain(match->group(0)))
            continue;
        if (std::optional<Found> found = rule.meaning(*match, reference)) {
            if (subject.trace)
                subject.trace->push_back({family.name, rule.name, match->range()});
            return Phrase<Found>{*found, match->range()};
        }
    }
    return std::nullopt;
}

/// A number of ASCII digits; absent where there is none or it does not fit 64 bits.
std::optional<std::int64_t> number(std::u16string_view digits);

/// Sunday = 1 ... Saturday = 7, by the English name in any case.
std::optional<int> weekdayNumber(std::u16string_view name);

/// 1 ... 12, by the English name or its first three letters in any case.
std::optional<int> monthNumber(std::u16string_view name);

/// Whether `word` is `expected`, an ASCII word in lower case, in any case; or begins with it.
bool isWord(std::u16string_view word, std::u16string_view expected);
bool startsWithWord(std::u16string_view word, std::u16string_view expected);

} // namespace quillo

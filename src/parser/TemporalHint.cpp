#include "parser/TemporalHint.h"

#include "parser/Pattern.h"
#include "unicode/Text.h"

namespace quillo {

namespace {

using unicode::Regex;

constexpr Words hintWords = Words::first(hintWordCount);

/// Searched in the lower-cased text, hence sensitive to case. A pattern without needed words is run on every
/// text that holds a digit.
constinit const Pattern hintPatterns[] = {
    {uR"(\bin\s+(a|an|\d+|some|several)\s+(min|minute|minutes|hour|hours|hr|hrs|day|days|week|weeks|month|months)\b)",
     Regex::Case::Sensitive,
     {{u"in"}, {u"min", u"hour", u"hr", u"day", u"week", u"month"}}},
    {uR"(\b\d+\s+(min|minute|minutes|hour|hours|hr|hrs|day|days|week|weeks)\s+from\s+(now|today|tomorrow)\b)",
     Regex::Case::Sensitive,
     {{u"from"}, {}, true}},
    {uR"(\b\d{1,2}(:\d{2})?\s*(am|pm|a\.m\.|p\.m\.|p|a)\b)", Regex::Case::Sensitive, {{}, {}, true}},
    {uR"(\b\d{3,4}\s*(am|pm)\b)", Regex::Case::Sensitive, {{u"am", u"pm"}, {}, true}},
    {uR"(\bat\s+\d{1,2}(:\d{2})?\b)", Regex::Case::Sensitive, {{u"at"}, {}, true}},
    {uR"(\bat\s+\d{3,4}\b)", Regex::Case::Sensitive, {{u"at"}, {}, true}},
    {uR"(\b\d{1,2}/\d{1,2}\b)", Regex::Case::Sensitive, {{u"/"}, {}, true}},
    {uR"(\b(?:on|by|until|before|after)\s+the\s+\d{1,2}(st|nd|rd|th)?\b)",
     Regex::Case::Sensitive,
     {{u"the"}, {}, true}},
    {uR"(\bthe\s+\d{1,2}(st|nd|rd|th)\b)", Regex::Case::Sensitive, {{u"the"}, {}, true}},
};

} // namespace

std::span<const Pattern> temporalHintPatterns() {
    return hintPatterns;
}

bool hasTemporalHint(std::u16string_view text) {
    const std::u16string lowered = unicode::lower(text);
    return hasTemporalHint(lowered, look(lowered));
}

bool hasTemporalHint(std::u16string_view loweredText, const Sightings& sightings) {
    if (sightings.words.intersects(hintWords))
        return true;
    for (const Pattern& pattern : hintPatterns) {
        if (pattern.search(loweredText, sightings))
            return true;
    }
    return false;
}

} // namespace quillo

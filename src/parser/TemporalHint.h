/// Whether a text could speak of a time at all.
#pragma once

#include "parser/Pattern.h"
#include "parser/Vocabulary.h"

#include <span>
#include <string_view>

namespace quillo {

/// A cheap, deliberately generous test that keeps plain titles ("Buy milk") away from the rules. It sees
/// words inside words ("may" in "maybe") and phrases that no rule handles ("asap").
bool hasTemporalHint(std::u16string_view text);

/// The same for a text in lower case that has been looked at already.
bool hasTemporalHint(std::u16string_view loweredText, const Sightings& sightings);

/// The patterns that hint at a time in a text without any of the words that do.
std::span<const Pattern> temporalHintPatterns();

} // namespace quillo

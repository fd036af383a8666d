/// Takes the phrases that were understood out of a text.
#pragma once

#include "unicode/Text.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// The text without the given ranges (they may overlap and stand in any order), its white space made single
/// blanks, and without blanks and any of , ; . : at its ends. Without ranges: the trimmed text, otherwise as
/// it is. UTF-8.
std::string cleanTitle(std::u16string_view text, std::vector<unicode::TextRange> ranges);

} // namespace quillo

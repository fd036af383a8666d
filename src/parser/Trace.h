/// A record of which rule matched what, for those who ask why a text was understood as it was.
#pragma once

#include "unicode/Text.h"

#include <string_view>
#include <vector>

namespace quillo {

struct TraceEntry {
    std::string_view family; ///< for example "relative offsets"
    std::string_view rule;   ///< for example "in <amount> <unit>"
    unicode::TextRange range;
};

/// In the order in which the rules contributed.
using Trace = std::vector<TraceEntry>;

} // namespace quillo

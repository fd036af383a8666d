/// What the awards are called, and which of them a completion deserves.
#pragma once

#include "model/Award.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace quillo {

std::string_view titleOf(Award award);
std::string_view subtitleOf(Award award);

/// What the awards look at when a task is completed.
struct CompletionFacts {
    double durationSeconds = 0;     ///< from creation to completion; as it is, even if below 0
    int hour = 0;                   ///< 0 ... 23, of the completion where the user lives
    std::int64_t currentStreak = 0; ///< in days, this completion counted
};

/// The awards that such a completion deserves, earned before or not, in the order of their declaration.
std::vector<Award> awardsFor(const CompletionFacts& facts);

} // namespace quillo

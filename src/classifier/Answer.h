/// From what the network makes of a text to an answer.
#pragma once

#include "classifier/Network.h"
#include "ports/LanguageModel.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillo::classifier {

/// What a text says about time, in the terms of the answers that are asked for.
struct Answer {
    std::string kind = "NONE";
    std::int64_t amount = 0;
    std::int64_t month = 0;
    std::int64_t day = 0;
    bool hasTime = false;
    std::int64_t hour = 0;
    std::int64_t minute = 0;
    std::string title;
    double score = 0; ///< how sure the network is, 0 ... 1
};

/// Below this NONE is answered: a date that is not found costs less than a wrong one.
inline constexpr double sure = 0.75;

/// Reads the impression with what the text says in digits. The network knows nothing of today: what relates
/// to it, such as the end of next week, is worked out here from the reference. A date that cannot be, a year
/// that is too far away, and whatever else does not fit together is NONE.
Answer answerTo(const Weights& weights, std::string_view text, const std::vector<Token>& tokens,
                const Impression& impression, const ModelReference& reference);

} // namespace quillo::classifier

/// The network: from tokens to what it makes of them.
#pragma once

#include "classifier/Shape.h"
#include "classifier/Tokens.h"
#include "classifier/Weights.h"

#include <array>
#include <string_view>
#include <vector>

namespace quillo::classifier {

/// Scores, not probabilities: the highest is what the network believes.
struct Impression {
    std::vector<std::array<float, roleCount>> roles; ///< a token each
    std::vector<float> kind;
    std::vector<float> amount;
    std::vector<float> month;
    std::vector<float> day;
    std::vector<float> hour;
    std::vector<float> minute;
    std::vector<float> shift;
};

/// What the network makes of a text that was cut into these tokens, of which there is at least one.
Impression look(const Weights& weights, std::string_view text, const std::vector<Token>& tokens);

} // namespace quillo::classifier

/// What the network is told of a token.
#pragma once

#include "classifier/Shape.h"
#include "classifier/Tokens.h"
#include "classifier/Weights.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace quillo::classifier {

struct Features {
    std::vector<std::size_t> characters;    ///< rows of the characters; tokenCharacters at most
    std::size_t value = NoNumber;           ///< row of what its digits may be
    std::size_t word = 0;                   ///< row of the word of the lexicon that it seems to be
    std::array<bool, flagCount> flags = {}; ///< how it stands in the text
};

Features featuresOf(const Weights& weights, std::string_view text, const std::vector<Token>& tokens,
                    std::size_t place);

} // namespace quillo::classifier

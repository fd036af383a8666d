/// What is left of a text without what says when.
#pragma once

#include "classifier/Shape.h"
#include "classifier/Tokens.h"

#include <string>
#include <string_view>
#include <vector>

namespace quillo::classifier {

/// The tokens that are to be kept, as they stand in the text; one blank where others were between them. May
/// be empty.
std::string titleOf(std::string_view text, const std::vector<Token>& tokens, const std::vector<Role>& roles);

} // namespace quillo::classifier

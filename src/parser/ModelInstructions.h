/// What a language model is told before it is asked to classify a text.
#pragma once

#include "base/Instant.h"
#include "unicode/DateFormat.h"

#include <string>

namespace quillo {

/// The instructions for a text that was typed at `now`; `format` says where, and in which language its date
/// is named. UTF-8.
std::string modelInstructions(Instant now, const unicode::DateFormat& format);

} // namespace quillo

/// Makes foreign bytes proper Unicode: what is malformed becomes U+FFFD. The rest is untouched.
#pragma once

#include <string>

namespace quillo::cli {

/// Mends UTF-8. Returns whether anything was replaced.
bool makeWellFormed(std::string& utf8);

/// Mends JSON text: its UTF-8, and escapes of surrogates without their other half. Returns whether anything
/// was replaced.
bool makeWellFormedJson(std::string& json);

} // namespace quillo::cli

/// Bytes as plain text (RFC 4648, section 4, with padding).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillo {

std::string encodeBase64(std::string_view bytes);

/// Exactly what encodeBase64() writes; anything else (other characters, blanks, missing padding, bits that
/// say nothing) is absent.
std::optional<std::string> decodeBase64(std::string_view text);

} // namespace quillo

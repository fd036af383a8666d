/// Addresses of language-model servers, as users type them.
#pragma once

#include "base/HttpAddress.h"
#include "base/Result.h"

#include <string>
#include <string_view>

namespace quillo {

/// Reads "http://127.0.0.1:11434", "https://example.org/models/v1", "localhost:8080", "[::1]:8080": the base
/// below which the server has its `/v1`, without that and without a slash at its end. The scheme may be left
/// out of an address on this machine, and is http then. Names and passwords, queries and fragments are
/// refused, as is what is not ASCII.
Result<std::string> readServerAddress(std::string_view typed);

} // namespace quillo

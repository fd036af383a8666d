/// Where requests with a password in them may go.
#pragma once

#include <optional>
#include <string>

namespace quillo {

/// Whether nobody can listen on the way to that address: https, or on this machine.
bool isConfidential(const std::string& url);

/// The address that a server leads to from another one of its own, where that is to be followed: on the same
/// host, with the same port, and the same scheme or https instead of http (each on its usual port, then).
std::optional<std::string> followed(const std::string& url, const std::string& location);

} // namespace quillo

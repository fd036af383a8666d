/// Addresses of servers that speak HTTP.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillo {

struct HttpAddress {
    std::string scheme; ///< "http" or "https"
    std::string host;   ///< in lower case; an IPv6 address in its brackets
    std::string port;   ///< with its colon; or nothing
    std::string path;   ///< from its slash on, as it was typed; or nothing
};

/// Reads "https://example.org:8443/a%20b". Names and passwords, queries and fragments are refused, as is what
/// is not ASCII.
std::optional<HttpAddress> readHttpAddress(std::string_view typed);

/// The form that readHttpAddress() reads.
std::string toText(const HttpAddress& address);

/// Whether what is sent there stays on this machine: `localhost` and the loopback addresses.
bool isOnThisMachine(const HttpAddress& address);
bool isOnThisMachine(std::string_view address);

} // namespace quillo

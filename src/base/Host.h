/// What stands for a machine in the address of a server.
#pragma once

#include <netinet/in.h>

#include <optional>
#include <string_view>

namespace quillo {

/// The IPv6 address that stands in brackets there; absent where it is none.
std::optional<in6_addr> ipv6Address(std::string_view host);

/// Whether what is sent to that host, whose name is in lower case, stays on this machine: `localhost` and the
/// loopback addresses.
bool isLoopback(std::string_view host);

} // namespace quillo

#include "base/Host.h"

#include <arpa/inet.h>

#include <string>

namespace quillo {

namespace {

/// inet_pton would read as far as a zero byte, and leave aside what is behind it.
bool readAddress(int family, std::string_view text, void* address) {
    return text.find('\0') == std::string_view::npos &&
           inet_pton(family, std::string(text).c_str(), address) == 1;
}

} // namespace

std::optional<in6_addr> ipv6Address(std::string_view host) {
    if (host.size() < 2 || host.front() != '[' || host.back() != ']')
        return std::nullopt;
    in6_addr address{};
    const std::string_view inside = host.substr(1, host.size() - 2);
    return readAddress(AF_INET6, inside, &address) ? std::optional(address) : std::nullopt;
}

bool isLoopback(std::string_view host) {
    if (host == "localhost")
        return true;
    if (const std::optional<in6_addr> address = ipv6Address(host)) {
        constexpr int firstOfMapped = 12; // ::ffff:127.0.0.1
        return IN6_IS_ADDR_LOOPBACK(&*address) ||
               (IN6_IS_ADDR_V4MAPPED(&*address) && address->s6_addr[firstOfMapped] == IN_LOOPBACKNET);
    }
    in_addr address{};
    return readAddress(AF_INET, host, &address) &&
           ntohl(address.s_addr) >> IN_CLASSA_NSHIFT == IN_LOOPBACKNET;
}

} // namespace quillo

#include "base/Host.h"

#include <arpa/inet.h>

#include <string>

namespace quillo {

std::optional<in6_addr> ipv6Address(std::string_view host) {
    if (host.size() < 2 || host.front() != '[' || host.back() != ']')
        return std::nullopt;
    const std::string inside(host.substr(1, host.size() - 2));
    in6_addr address{};
    return inet_pton(AF_INET6, inside.c_str(), &address) == 1 ? std::optional(address) : std::nullopt;
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
    return inet_pton(AF_INET, std::string(host).c_str(), &address) == 1 &&
           ntohl(address.s_addr) >> IN_CLASSA_NSHIFT == IN_LOOPBACKNET;
}

} // namespace quillo

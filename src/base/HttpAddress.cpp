#include "base/HttpAddress.h"

#include "base/Host.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace quillo {

namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view nameCharacters = "abcdefghijklmnopqrstuvwxyz0123456789-._";
constexpr std::string_view pathCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~%!$&'()*+,;=:@/";

bool consistsOf(std::string_view text, std::string_view characters) {
    return text.find_first_not_of(characters) == std::string_view::npos;
}

std::string lowerCase(std::string_view ascii) {
    std::string lower(ascii);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    return lower;
}

/// What stands between the scheme and the path.
struct Authority {
    std::string host; ///< lower case; an IPv6 address in its brackets
    std::string port; ///< with its colon; or nothing
};

bool isPort(std::string_view text) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    return consistsOf(text, digits) && error == std::errc() && end == text.data() + text.size() && port > 0;
}

std::optional<Authority> readAuthority(std::string_view text) {
    const std::size_t bracket = text.find(']');
    const std::size_t colon = text.find(':', bracket == std::string_view::npos ? 0 : bracket);
    const std::string_view port = colon == std::string_view::npos ? "" : text.substr(colon);
    std::string host = lowerCase(text.substr(0, colon));
    const bool isName = !host.empty() && host.front() != '.' && consistsOf(host, nameCharacters);
    if ((!isName && !ipv6Address(host)) || (!port.empty() && !isPort(port.substr(1))))
        return std::nullopt;
    return Authority{std::move(host), std::string(port)};
}

constexpr std::string_view schemeEnd = "://";

} // namespace

std::optional<HttpAddress> readHttpAddress(std::string_view typed) {
    const std::size_t end = typed.find(schemeEnd);
    if (end == std::string_view::npos)
        return std::nullopt;
    std::string scheme = lowerCase(typed.substr(0, end));
    const std::string_view rest = typed.substr(end + schemeEnd.size());
    const std::size_t slash = std::min(rest.find('/'), rest.size());
    std::optional<Authority> authority = readAuthority(rest.substr(0, slash));
    const std::string_view path = rest.substr(slash);
    if (!authority || !consistsOf(path, pathCharacters) || (scheme != "http" && scheme != "https"))
        return std::nullopt;
    return HttpAddress{std::move(scheme), std::move(authority->host), std::move(authority->port),
                       std::string(path)};
}

std::string toText(const HttpAddress& address) {
    return address.scheme + std::string(schemeEnd) + address.host + address.port + address.path;
}

bool isOnThisMachine(const HttpAddress& address) {
    return isLoopback(address.host);
}

bool isOnThisMachine(std::string_view address) {
    const std::optional<HttpAddress> read = readHttpAddress(address);
    return read && isOnThisMachine(*read);
}

} // namespace quillo

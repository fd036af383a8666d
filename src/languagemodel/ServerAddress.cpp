#include "languagemodel/ServerAddress.h"

#include "base/Host.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace quillo {

namespace {

constexpr std::size_t longestAddress = 1024;
constexpr std::string_view digits = "0123456789";
constexpr std::string_view nameCharacters = "abcdefghijklmnopqrstuvwxyz0123456789-._";
constexpr std::string_view pathCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~%!$&'()*+,;=:/";

bool consistsOf(std::string_view text, std::string_view characters) {
    return text.find_first_not_of(characters) == std::string_view::npos;
}

std::string lowerCase(std::string_view ascii) {
    std::string lower(ascii);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    return lower;
}

bool removeSuffix(std::string_view& text, std::string_view suffix) {
    if (!text.ends_with(suffix))
        return false;
    text.remove_suffix(suffix.size());
    return true;
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

Result<std::string> readServerAddress(std::string_view typed) {
    const Error none{"\"" + std::string(typed.substr(0, longestAddress)) +
                     "\" is no address of a server, such as http://127.0.0.1:8080"};
    const std::size_t end = typed.find(schemeEnd);
    const bool hasScheme = end != std::string_view::npos;
    const std::string scheme = hasScheme ? lowerCase(typed.substr(0, end)) : "http";
    const std::string_view rest = hasScheme ? typed.substr(end + schemeEnd.size()) : typed;
    const std::size_t slash = std::min(rest.find('/'), rest.size());
    const std::optional<Authority> authority = readAuthority(rest.substr(0, slash));
    std::string_view path = rest.substr(slash);
    if (typed.size() > longestAddress || !authority || !consistsOf(path, pathCharacters) ||
        (scheme != "http" && scheme != "https") || (!hasScheme && !isLoopback(authority->host)))
        return none;
    while (removeSuffix(path, "/") || removeSuffix(path, "/v1")) {
    }
    return scheme + std::string(schemeEnd) + authority->host + authority->port + std::string(path);
}

bool isOnThisMachine(std::string_view address) {
    const std::string_view rest = address.substr(address.find(schemeEnd) + schemeEnd.size());
    const std::optional<Authority> authority = readAuthority(rest.substr(0, rest.find('/')));
    return authority && isLoopback(authority->host);
}

} // namespace quillo

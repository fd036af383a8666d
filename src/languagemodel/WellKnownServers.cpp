#include "languagemodel/WellKnownServers.h"

#include "languagemodel/ServerAddress.h"

#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace quillo {

namespace {

constexpr const char* ollamaPort = ":11434";

/// OLLAMA_HOST tells the server where to listen, too: "0.0.0.0" is everywhere, here among others. Scheme,
/// host and port may each be left out.
std::optional<std::string> ollamaOfEnvironment() {
    const char* const variable = std::getenv("OLLAMA_HOST");
    if (variable == nullptr || *variable == '\0')
        return std::nullopt;
    std::string host = variable;
    std::string scheme;
    if (const std::size_t end = host.find("://"); end != std::string::npos) {
        scheme = host.substr(0, end + 3);
        host.erase(0, end + 3);
    }
    constexpr std::string_view everywhere = "0.0.0.0";
    if (host.starts_with(everywhere))
        host.erase(0, everywhere.size());
    if (host.empty() || host.front() == ':')
        host.insert(0, "127.0.0.1");
    // The colons of an IPv6 address stand in brackets.
    const std::size_t bracket = host.find(']');
    const bool hasPort = host.find(':', bracket == std::string::npos ? 0 : bracket) != std::string::npos;
    if (scheme.empty())
        host = "http://" + host + (hasPort ? "" : ollamaPort);
    const auto address = readServerAddress(scheme + host);
    return address ? std::optional(*address) : std::nullopt;
}

} // namespace

std::vector<std::string> wellKnownServers() {
    return {ollamaOfEnvironment().value_or("http://127.0.0.1:11434"), "http://127.0.0.1:8080",
            "http://127.0.0.1:9931", "http://127.0.0.1:1234"};
}

} // namespace quillo

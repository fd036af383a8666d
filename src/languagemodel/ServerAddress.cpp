#include "languagemodel/ServerAddress.h"

#include <cstddef>
#include <optional>

namespace quillo {

namespace {

constexpr std::size_t longestAddress = 1024;

bool removeSuffix(std::string& text, std::string_view suffix) {
    if (!text.ends_with(suffix))
        return false;
    text.resize(text.size() - suffix.size());
    return true;
}

} // namespace

Result<std::string> readServerAddress(std::string_view typed) {
    const bool hasScheme = typed.find("://") != std::string_view::npos;
    std::optional<HttpAddress> address =
        readHttpAddress(hasScheme ? std::string(typed) : "http://" + std::string(typed));
    if (typed.size() > longestAddress || !address || (!hasScheme && !isOnThisMachine(*address)))
        return Error{"\"" + std::string(typed.substr(0, longestAddress)) +
                     "\" is no address of a server, such as http://127.0.0.1:8080"};
    while (removeSuffix(address->path, "/") || removeSuffix(address->path, "/v1")) {
    }
    return toText(*address);
}

} // namespace quillo

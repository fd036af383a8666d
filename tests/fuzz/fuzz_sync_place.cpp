// Any bytes as a place to keep the list in step through, and as a password: reading them never crashes, a
// place that was read comes back equal when it is written and read again, and no URL has a user in it.
#include "sync/Passwords.h"
#include "sync/SyncPlace.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <variant>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillo;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto place = readSyncPlace(text)) {
        const auto again = readSyncPlace(toText(*place));
        if (!again || *again != *place)
            std::abort();
        if (const auto* const server = std::get_if<WebDavFolder>(&*place)) {
            const std::string_view url = server->url;
            const std::size_t host = url.find("://") + 3;
            if (url.substr(host, url.find('/', host) - host).find('@') != std::string_view::npos ||
                url.find_first_of(" ?#\n") != std::string_view::npos || url.ends_with('/'))
                std::abort();
        }
    }
    if (checkPassword(text) && (text.empty() || text.size() > longestPassword ||
                                text.find_first_of(std::string_view("\n\r\0", 3)) != std::string_view::npos))
        std::abort();
    return 0;
}

// Any bytes as what a WebDAV server lists: reading them never crashes, names have no folder in them unless
// they were encoded so, and a document with a type declaration is never read.
#include "webdav/Listing.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillo;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto files = readListing(bytes);
    if (!files)
        return 0;
    for (const ListedFile& file : *files) {
        if (file.name.empty() || file.name.size() + file.etag.size() > 4 * size)
            std::abort();
        if (file.name.find('/') != std::string::npos && bytes.find("%2") == std::string_view::npos)
            std::abort();
    }
    return 0;
}

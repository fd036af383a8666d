// Any bytes as the stored shortcut: reading them never crashes, and what is read can be shown, and comes back
// equal when it is written and read again.
#include "hotkey/DisplayString.h"
#include "model/HotKeyConfigJson.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto config = quillo::decodeHotKeyConfig({reinterpret_cast<const char*>(data), size});
    if (config && (quillo::decodeHotKeyConfig(quillo::encodeHotKeyConfig(*config)) != config ||
                   quillo::displayString(*config).empty()))
        std::abort();
    return 0;
}

// Any bytes as the file of another device, and as the status of keeping in step: reading them never crashes,
// and what was read comes back equal when it is written and read again.
#include "sync/DeviceFile.h"
#include "sync/SyncStatus.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <variant>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillo;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto read = decodeDeviceFile(bytes);
    if (const auto* const file = std::get_if<DeviceFile>(&read)) {
        if (!std::isfinite(file->list.stamp) || file->list.stamp < 0)
            std::abort();
        const auto again = encodeDeviceFile(*file);
        if (!again)
            std::abort();
        const auto reread = decodeDeviceFile(*again);
        if (!std::holds_alternative<DeviceFile>(reread) || std::get<DeviceFile>(reread) != *file)
            std::abort();
    }
    if (const auto status = decodeSyncStatus(bytes)) {
        if (decodeSyncStatus(encodeSyncStatus(*status)) != status)
            std::abort();
    }
    return 0;
}

/// What a device leaves for the others: a file of its own, which no other device writes.
///
/// {"format":1,"device":"<UUID>","name":"laptop","app":"Quillo 1.2","items":"<Base64 of the list in its
/// stored form>","stamp":1741081260.25}
#pragma once

#include "base/Result.h"
#include "base/Uuid.h"
#include "sync/StampedBytes.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace quillo {

/// Who wrote a file.
struct Device {
    Uuid id;
    std::string name; ///< what its user calls it; anything, in UTF-8
    std::string app;  ///< the program and its version; anything, in UTF-8

    friend bool operator==(const Device&, const Device&) = default;
};

struct DeviceFile {
    Device device;
    StampedBytes list;

    friend bool operator==(const DeviceFile&, const DeviceFile&) = default;
};

/// The file has another format than this program knows. There may be anything in it that is worth keeping.
struct UnknownFormat {
    friend bool operator==(const UnknownFormat&, const UnknownFormat&) = default;
};

/// The most bytes that a file may have.
inline constexpr std::size_t largestDeviceFile = std::size_t{32} << 20;

/// Absent if the file would be too large. In names that are not UTF-8, "?" stands for what is none.
std::optional<std::string> encodeDeviceFile(const DeviceFile& file);

/// Reads a file, which may be half of one, or from anybody. All members must be there and of their types, the
/// stamp finite and not negative; unknown members are skipped. Whether the list can be read is not looked at.
/// An error says in a few words what is wrong.
std::variant<DeviceFile, UnknownFormat, Error> decodeDeviceFile(std::string_view bytes);

/// The same; absent where it cannot be read, or is another device's.
std::optional<DeviceFile> decodeDeviceFileOf(const Uuid& device, std::string_view bytes);

/// "<UUID>.json", in upper case.
std::string deviceFileName(const Uuid& device);

/// The device whose file has that name. Absent for all other names: those of copies that tools make which
/// keep folders in step ("….sync-conflict-…", "… (conflicted copy)…", "~….tmp"), and whatever else is there.
std::optional<Uuid> deviceOfFileName(std::string_view name);

} // namespace quillo

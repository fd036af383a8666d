#include "control/SocketAddress.h"

#include "base/StableHash.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>

namespace quillo::control {

namespace {

bool fits(const std::filesystem::path& path) {
    return path.native().size() < sizeof(sockaddr_un::sun_path);
}

} // namespace

std::optional<std::filesystem::path> socketPath(const std::filesystem::path& dataFolder) {
    // Both programs must come to the same name, however the folder was named to them.
    std::error_code unreachable;
    const std::filesystem::path real = std::filesystem::weakly_canonical(dataFolder / "", unreachable);
    const std::filesystem::path& folder = unreachable ? dataFolder : real;
    if (const auto path = folder / "control.sock"; fits(path))
        return path;
    const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime == nullptr || *runtime != '/')
        return std::nullopt;
    const auto path = std::filesystem::path(runtime) /
                      ("quillo-" + std::to_string(stableHash((folder / "").native())) + ".sock");
    return fits(path) ? std::optional(path) : std::nullopt;
}

sockaddr_un socketAddress(const std::filesystem::path& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.native().size());
    return address;
}

} // namespace quillo::control

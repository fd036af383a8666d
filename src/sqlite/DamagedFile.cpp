#include "sqlite/DamagedFile.h"

#include "base/Clock.h"
#include "base/UtcTime.h"
#include "sqlite/PrivateFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <string>
#include <string_view>

namespace quillo {

namespace {

/// The file itself first: should the process die half way, what is left behind is a companion without its
/// file, which is noticed, and never a file without the companion that holds its last changes, which would go
/// unnoticed.
constexpr std::array<std::string_view, 3> endings{"", "-wal", "-shm"};

std::filesystem::path withEnding(const std::filesystem::path& path, std::string_view ending) {
    return path.string().append(ending);
}

bool isThere(const std::filesystem::path& path) {
    std::error_code ignored;
    return std::filesystem::symlink_status(path, ignored).type() != std::filesystem::file_type::not_found;
}

/// `<name>.damaged-20250304T101112.123Z`, numbered where that is taken already.
std::filesystem::path freeName(const std::filesystem::path& path) {
    const std::string time = fileNameTime(floorToMillisecond(SystemClock().now()));
    const std::filesystem::path first = path.parent_path() / path.stem().concat(".damaged-" + time);
    std::filesystem::path name = first;
    const auto taken = [&name] {
        for (const std::string_view ending : endings) {
            if (isThere(withEnding(name, ending)))
                return true;
        }
        return false;
    };
    for (int number = 2; taken(); ++number)
        name = withEnding(first, "." + std::to_string(number));
    return name;
}

} // namespace

Result<std::filesystem::path> moveDamagedAside(const std::filesystem::path& path) {
    const std::filesystem::path aside = freeName(path);
    for (const std::string_view ending : endings) {
        const std::filesystem::path from = withEnding(path, ending);
        if (std::rename(from.c_str(), withEnding(aside, ending).c_str()) != 0 && errno != ENOENT)
            return Error{"cannot move the damaged " + from.string() + " aside: " + systemErrorText(errno)};
    }
    const int folder = open(path.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
    return aside;
}

} // namespace quillo

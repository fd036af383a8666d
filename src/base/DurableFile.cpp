#include "base/DurableFile.h"

#include "base/Descriptor.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace quillo {

namespace {

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

/// File systems that cannot say when something is on the disk (some of those in user space, some networks')
/// say that instead.
bool bringToDisk(int file) {
    return ::fsync(file) == 0 || errno == EINVAL || errno == ENOSYS;
}

} // namespace

bool writeDurably(const std::filesystem::path& folder, const std::string& name,
                  const std::filesystem::path& temporary, std::string_view bytes) {
    {
        const Descriptor file(
            ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600));
        if (!file.isOpen() || !writeAll(file.number(), bytes) || !bringToDisk(file.number()))
            return false;
    }
    if (::rename(temporary.c_str(), (folder / name).c_str()) != 0)
        return false;
    const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return directory.isOpen() && bringToDisk(directory.number());
}

} // namespace quillo

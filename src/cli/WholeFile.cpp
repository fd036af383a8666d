#include "cli/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace quillo::cli {

namespace {

Error cannotWrite(const std::filesystem::path& file) {
    return {"cannot write " + file.string() + ": " + std::generic_category().message(errno)};
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return false;
    }
    return true;
}

/// The file that the links lead to, which need not exist.
std::filesystem::path behindLinks(std::filesystem::path file) {
    std::error_code noLink;
    for (auto link = std::filesystem::read_symlink(file, noLink); !noLink;
         link = std::filesystem::read_symlink(file, noLink))
        file = file.parent_path() / link;
    return file;
}

Outcome writeTo(const std::filesystem::path& file, std::string_view bytes) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    const bool written = descriptor >= 0 && writeAll(descriptor, bytes);
    Outcome outcome = written ? success() : Outcome(cannotWrite(file));
    if (descriptor >= 0)
        close(descriptor);
    return outcome;
}

} // namespace

Outcome writeWholeFile(const std::filesystem::path& file, std::string_view bytes) {
    struct stat status {};
    const bool exists = stat(file.c_str(), &status) == 0;
    if (!exists && errno != ENOENT)
        return cannotWrite(file);
    if (exists && !S_ISREG(status.st_mode))
        return writeTo(file, bytes);
    if (exists && access(file.c_str(), W_OK) != 0) // Its folder may allow what it does not.
        return cannotWrite(file);

    const std::filesystem::path target = behindLinks(file);
    std::string temporary = target.parent_path() / ".quillo-XXXXXX";
    const int descriptor = mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0)
        return cannotWrite(file);
    const mode_t mask = umask(0);
    umask(mask);
    const mode_t mode = exists ? status.st_mode & 07777 : 0666 & ~mask;
    const bool written = writeAll(descriptor, bytes) && fchmod(descriptor, mode) == 0 &&
                         fsync(descriptor) == 0 && rename(temporary.c_str(), target.c_str()) == 0;
    Outcome outcome = written ? success() : Outcome(cannotWrite(file));
    if (!written)
        unlink(temporary.c_str());
    close(descriptor);
    return outcome;
}

} // namespace quillo::cli

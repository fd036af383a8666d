#include "sync/FolderCarrier.h"

#include "base/Descriptor.h"
#include "base/DurableFile.h"
#include "base/Log.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <memory>
#include <set>
#include <string>
#include <system_error>
#include <utility>

namespace quillo {

namespace {

using std::filesystem::path;

/// File systems that count in the coarsest steps (FAT) count in two seconds.
constexpr std::time_t coarsestStep = 3;

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

std::string reason(int error) {
    return std::generic_category().message(error);
}

bool sameTime(const timespec& left, const timespec& right) {
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

bool isUnchanged(const struct stat& before, const struct stat& now) {
    return before.st_dev == now.st_dev && before.st_ino == now.st_ino && before.st_size == now.st_size &&
           sameTime(before.st_mtim, now.st_mtim) && sameTime(before.st_ctim, now.st_ctim);
}

/// The file's bytes, or why there are none.
Result<std::string> readBounded(const path& file, struct stat& status) {
    // Not waiting for whoever might write into a pipe of that name.
    const Descriptor open(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!open.isOpen() || ::fstat(open.number(), &status) != 0)
        return Error{reason(errno)};
    if (!S_ISREG(status.st_mode))
        return Error{"it is no file"};
    if (static_cast<std::size_t>(status.st_size) > largestDeviceFile)
        return Error{"it is too large"};
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t length = 0;
    while (length < bytes.size()) {
        const ssize_t count = ::read(open.number(), bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return Error{reason(errno)};
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    bytes.resize(length);
    return bytes;
}

} // namespace

FolderCarrier::FolderCarrier(const path& root, Device self, SetUp setUp)
    : root_(root), folder_(root / "quillo" / "v1"), toBeMade_(setUp == SetUp::Yes),
      watch_(folder_, [](std::string_view name) { return deviceOfFileName(name).has_value(); }),
      files_(std::move(self), folder_.string(), [this](const Uuid& device) { return read(device); }) {}

Exchange FolderCarrier::exchange(Mirror& mirror) {
    Exchange exchange;
    if (toBeMade_)
        exchange.outcome = makeFolder();
    if (exchange.outcome) {
        toBeMade_ = false;
        watch_.follow();
        exchange.outcome = look();
    }
    if (!exchange.outcome)
        return exchange;
    if (const auto outgoing = mirror.outgoing())
        exchange.outcome = send(*outgoing);
    files_.tell(mirror, exchange);
    return exchange;
}

Result<DeviceFile> FolderCarrier::fileOf(const Uuid& device) {
    struct stat status {};
    const std::string name = deviceFileName(device);
    const Result<std::string> bytes = readBounded(folder_ / name, status);
    if (!bytes)
        return Error{"cannot read " + (folder_ / name).string() + ": " + bytes.error().message};
    if (auto file = decodeDeviceFileOf(device, *bytes))
        return *std::move(file);
    return Error{(folder_ / name).string() + " cannot be read"};
}

Outcome FolderCarrier::forget(const Uuid& device, double stamp) {
    const Result<DeviceFile> file = fileOf(device);
    if (!file)
        return file.error();
    if (file->list.stamp != stamp)
        return Error{"that computer has just left another list"};
    const path name = folder_ / deviceFileName(device);
    return ::unlink(name.c_str()) == 0 ? success()
                                       : Error{"cannot remove " + name.string() + ": " + reason(errno)};
}

Outcome FolderCarrier::makeFolder() const {
    for (const path& folder : {root_ / "quillo", folder_}) {
        if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
            return Error{"cannot make " + folder.string() + ": " + reason(errno)};
    }
    if (::access(folder_.c_str(), R_OK | W_OK | X_OK) != 0)
        return Error{"cannot write in " + folder_.string() + ": " + reason(errno)};
    return success();
}

Outcome FolderCarrier::look() {
    const std::unique_ptr<DIR, CloseFolder> folder(::opendir(folder_.c_str()));
    if (!folder) {
        const int error = errno;
        files_.forgetAll();
        seen_.clear();
        return Error{error == ENOENT || error == ENOTDIR
                         ? folder_.string() + " is not there; perhaps what it is on is not connected"
                         : "cannot read " + folder_.string() + ": " + reason(error)};
    }
    std::set<Uuid> there;
    errno = 0;
    while (const dirent* const entry = ::readdir(folder.get())) {
        const std::optional<Uuid> device = deviceOfFileName(entry->d_name);
        if (!device)
            continue;
        there.insert(*device);
        const Seen& seen = seen_[*device];
        struct stat now {};
        if (!seen.settled || ::stat((folder_ / entry->d_name).c_str(), &now) != 0 ||
            !isUnchanged(seen.status, now))
            static_cast<void>(files_.read(*device)); // Its errors are of the file.
        errno = 0;
    }
    if (errno != 0)
        return Error{"cannot read " + folder_.string() + ": " + reason(errno)};
    files_.keep(there);
    std::erase_if(seen_, [&](const auto& seen) { return !there.contains(seen.first); });
    return success();
}

DeviceFiles::Bytes FolderCarrier::read(const Uuid& device) {
    Seen& seen = seen_[device];
    seen.status = {};
    Result<std::string> bytes = readBounded(folder_ / deviceFileName(device), seen.status);
    seen.settled = bytes && seen.status.st_mtim.tv_sec + coarsestStep < std::time(nullptr);
    if (!bytes)
        return bytes.error();
    return *std::move(bytes);
}

Outcome FolderCarrier::send(const StampedBytes& list) {
    const auto bytes = files_.toBeWritten(list);
    if (!bytes)
        return bytes.error();
    if (!*bytes)
        return success();
    // Under a name that tools which keep folders in step leave alone.
    const std::string name = deviceFileName(files_.self());
    const path file = folder_ / name;
    const path temporary = folder_ / ("~" + files_.self().toString() + ".tmp");
    if (!writeDurably(folder_, name, temporary, **bytes)) {
        const std::string why = reason(errno);
        ::unlink(temporary.c_str());
        return Error{"cannot write " + file.string() + ": " + why};
    }
    files_.hasBeenWritten(list);
    Seen& seen = seen_[files_.self()];
    seen.settled = ::stat(file.c_str(), &seen.status) == 0; // Nobody else writes it.
    return success();
}

} // namespace quillo

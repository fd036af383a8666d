#include "sync/FolderCarrier.h"

#include "base/Descriptor.h"
#include "base/DurableFile.h"
#include "base/Log.h"
#include "model/TodoItemJson.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
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
    : root_(root), folder_(root / "quillo" / "v1"), self_(std::move(self)), toBeMade_(setUp == SetUp::Yes),
      watch_(folder_, [](std::string_view name) { return deviceOfFileName(name).has_value(); }) {}

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
    File* const found = latest();
    exchange.devices = devices();
    exchange.changed = mirror.receive(
        found != nullptr
            ? std::optional(StampedBytes{*found->items, std::get<FoundDevice>(found->content).stamp})
            : std::nullopt);
    for (auto& [device, file] : files_) {
        if (&file != found && device != self_.id)
            file.items.reset();
    }
    return exchange;
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
        files_.clear();
        return Error{error == ENOENT || error == ENOTDIR
                         ? folder_.string() + " is not there; perhaps what it is on is not connected"
                         : "cannot read " + folder_.string() + ": " + reason(error)};
    }
    std::set<Uuid> seen;
    errno = 0;
    while (const dirent* const entry = ::readdir(folder.get())) {
        const std::optional<Uuid> device = deviceOfFileName(entry->d_name);
        if (!device)
            continue;
        seen.insert(*device);
        File& file = files_[*device];
        struct stat now {};
        if (!file.settled || ::stat((folder_ / entry->d_name).c_str(), &now) != 0 ||
            !isUnchanged(file.status, now))
            read(*device, file);
        errno = 0;
    }
    if (errno != 0)
        return Error{"cannot read " + folder_.string() + ": " + reason(errno)};
    std::erase_if(files_, [&](const auto& file) { return !seen.contains(file.first); });
    return success();
}

void FolderCarrier::read(const Uuid& device, File& file) const {
    file.status = {};
    const Result<std::string> bytes = readBounded(folder_ / deviceFileName(device), file.status);
    auto content = bytes ? decodeDeviceFile(*bytes) : Error{bytes.error()};
    file.settled = bytes && file.status.st_mtim.tv_sec + coarsestStep < std::time(nullptr);
    file.items.reset();
    file.itemsChecked = false;
    if (std::holds_alternative<UnknownFormat>(content)) {
        skip(device, file, Error{"it is of a newer Quillo"});
        file.content = UnknownFormat{};
    } else if (const auto* const error = std::get_if<Error>(&content)) {
        skip(device, file, *error);
    } else {
        DeviceFile& read = std::get<DeviceFile>(content);
        if (read.device.id != device) {
            skip(device, file, Error{"it is another device's"});
            return;
        }
        file.items = std::move(read.list.items);
        file.content = FoundDevice{std::move(read.device), read.list.stamp};
    }
}

void FolderCarrier::skip(const Uuid& device, File& file, const Error& why) const {
    if (file.complaint != why)
        log("skipped " + (folder_ / deviceFileName(device)).string() + ": " + why.message);
    file.complaint = why;
    file.content = why;
    file.items.reset();
}

Outcome FolderCarrier::send(const StampedBytes& list) {
    const std::string name = deviceFileName(self_.id);
    const path file = folder_ / name;
    const auto found = files_.find(self_.id);
    if (found != files_.end() && std::holds_alternative<UnknownFormat>(found->second.content))
        return Error{"nothing is sent: " + file.string() + " is of a newer Quillo"};
    if (hasBeenSent(list))
        return success();
    const std::optional<std::string> bytes = encodeDeviceFile({self_, list});
    if (!bytes)
        return Error{"nothing is sent: the list is too large"};
    // Under a name that tools which keep folders in step leave alone.
    const path temporary = folder_ / ("~" + self_.id.toString() + ".tmp");
    if (!writeDurably(folder_, name, temporary, *bytes)) {
        const std::string why = reason(errno);
        ::unlink(temporary.c_str());
        return Error{"cannot write " + file.string() + ": " + why};
    }
    File& sent = files_[self_.id];
    sent.content = FoundDevice{self_, list.stamp};
    sent.items = list.items;
    sent.itemsChecked = true;
    sent.settled = ::stat(file.c_str(), &sent.status) == 0; // Nobody else writes it.
    return success();
}

/// Whether this device's file has that list, or a later one.
bool FolderCarrier::hasBeenSent(const StampedBytes& list) {
    const auto found = files_.find(self_.id);
    const FoundDevice* const own =
        found != files_.end() ? std::get_if<FoundDevice>(&found->second.content) : nullptr;
    return own != nullptr &&
           (list.stamp < own->stamp || (list.stamp == own->stamp && found->second.items == list.items));
}

/// The file with the latest list that can be read; it has its items. Null for none.
FolderCarrier::File* FolderCarrier::latest() {
    for (;;) {
        Files::value_type* best = nullptr;
        for (auto& file : files_) {
            if (std::holds_alternative<FoundDevice>(file.second.content) &&
                (best == nullptr || isBefore(file, *best)))
                best = &file;
        }
        if (best == nullptr)
            return nullptr;
        File& file = best->second;
        if (!file.items) {
            read(best->first, file);
            continue;
        }
        file.itemsChecked = file.itemsChecked || decodeStoredItems(file.items->bytes());
        if (file.itemsChecked) {
            file.complaint.reset();
            return &file;
        }
        skip(best->first, file, Error{"its list cannot be read"});
    }
}

/// Whether the list of the left file comes before that of the right one.
bool FolderCarrier::isBefore(const Files::value_type& left, const Files::value_type& right) const {
    const double leftStamp = std::get<FoundDevice>(left.second.content).stamp;
    const double rightStamp = std::get<FoundDevice>(right.second.content).stamp;
    if (leftStamp != rightStamp)
        return leftStamp > rightStamp;
    if ((left.first == self_.id) != (right.first == self_.id))
        return left.first == self_.id;
    return left.first < right.first;
}

std::vector<FoundDevice> FolderCarrier::devices() const {
    std::vector<FoundDevice> devices;
    for (const auto& [device, file] : files_) {
        if (const auto* const found = std::get_if<FoundDevice>(&file.content))
            devices.push_back(*found);
    }
    std::stable_sort(devices.begin(), devices.end(), [](const FoundDevice& left, const FoundDevice& right) {
        return left.stamp > right.stamp;
    });
    return devices;
}

} // namespace quillo

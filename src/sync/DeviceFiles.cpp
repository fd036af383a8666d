#include "sync/DeviceFiles.h"

#include "base/Log.h"
#include "model/TodoItemJson.h"

#include <algorithm>
#include <utility>

namespace quillo {

DeviceFiles::DeviceFiles(Device self, std::string folder, ReadBytes readBytes)
    : self_(std::move(self)), folder_(std::move(folder)), readBytes_(std::move(readBytes)) {}

Outcome DeviceFiles::take(const Uuid& device, Bytes bytes) {
    if (auto* const failed = std::get_if<PlaceFailed>(&bytes))
        return std::move(failed->why);
    const auto* const whole = std::get_if<std::string>(&bytes);
    auto content = whole != nullptr ? decodeDeviceFile(*whole) : std::get<Error>(std::move(bytes));
    File& file = files_[device];
    file.items.reset();
    file.itemsChecked = false;
    if (std::holds_alternative<UnknownFormat>(content)) {
        skip(device, file, Error{"it is of a newer Quillo"});
        file.content = UnknownFormat{};
    } else if (const auto* const error = std::get_if<Error>(&content)) {
        skip(device, file, *error);
    } else if (DeviceFile& sound = std::get<DeviceFile>(content); sound.device.id != device) {
        skip(device, file, Error{"it is another device's"});
    } else {
        file.items = std::move(sound.list.items);
        file.content = FoundDevice{std::move(sound.device), sound.list.stamp};
        dropItems();
    }
    return success();
}

void DeviceFiles::keep(const std::set<Uuid>& devices) {
    std::erase_if(files_, [&](const auto& file) { return !devices.contains(file.first); });
}

Result<std::optional<std::string>> DeviceFiles::toBeWritten(const StampedBytes& list) const {
    const auto found = files_.find(self_.id);
    if (found != files_.end()) {
        const auto& [device, file] = *found;
        if (std::holds_alternative<UnknownFormat>(file.content))
            return Error{"nothing is sent: " + folder_ + "/" + deviceFileName(device) +
                         " is of a newer Quillo"};
        const auto* const own = std::get_if<FoundDevice>(&file.content);
        if (own != nullptr &&
            (list.stamp < own->stamp || (list.stamp == own->stamp && file.items == list.items)))
            return std::optional<std::string>();
    }
    std::optional<std::string> bytes = encodeDeviceFile({self_, list});
    if (!bytes)
        return Error{"nothing is sent: the list is too large"};
    return bytes;
}

void DeviceFiles::hasBeenWritten(const StampedBytes& list) {
    File& file = files_[self_.id];
    file.content = FoundDevice{self_, list.stamp};
    file.items = list.items;
    file.itemsChecked = true;
}

void DeviceFiles::tell(Mirror& mirror, Exchange& exchange) {
    const Result<File*> found = latest();
    exchange.devices = devices();
    if (!found) {
        exchange.outcome = found.error();
        return;
    }
    exchange.changed = mirror.receive(
        *found != nullptr
            ? std::optional(StampedBytes{*(*found)->items, std::get<FoundDevice>((*found)->content).stamp})
            : std::nullopt);
    dropItems();
}

void DeviceFiles::skip(const Uuid& device, File& file, const Error& why) const {
    if (file.complaint != why)
        log("skipped " + folder_ + "/" + deviceFileName(device) + ": " + why.message);
    file.complaint = why;
    file.content = why;
    file.items.reset();
}

/// However many devices there are, only two lists are kept.
void DeviceFiles::dropItems() {
    const Files::value_type* const kept = best();
    for (auto& file : files_) {
        if (&file != kept && file.first != self_.id)
            file.second.items.reset();
    }
}

/// The file with the latest list that can be read; it has its items. Null for none.
Result<DeviceFiles::File*> DeviceFiles::latest() {
    while (Files::value_type* const found = best()) {
        File& file = found->second;
        if (!file.items) {
            if (Outcome outcome = read(found->first); !outcome)
                return outcome.error();
            continue;
        }
        file.itemsChecked = file.itemsChecked || decodeStoredItems(file.items->bytes());
        if (file.itemsChecked) {
            file.complaint.reset();
            return &file;
        }
        skip(found->first, file, Error{"its list cannot be read"});
    }
    return static_cast<File*>(nullptr);
}

DeviceFiles::Files::value_type* DeviceFiles::best() {
    Files::value_type* best = nullptr;
    for (auto& file : files_) {
        if (std::holds_alternative<FoundDevice>(file.second.content) &&
            (best == nullptr || isBefore(file, *best)))
            best = &file;
    }
    return best;
}

/// Whether the list of the left file comes before that of the right one.
bool DeviceFiles::isBefore(const Files::value_type& left, const Files::value_type& right) const {
    const double leftStamp = std::get<FoundDevice>(left.second.content).stamp;
    const double rightStamp = std::get<FoundDevice>(right.second.content).stamp;
    if (leftStamp != rightStamp)
        return leftStamp > rightStamp;
    if ((left.first == self_.id) != (right.first == self_.id))
        return left.first == self_.id;
    return left.first < right.first;
}

std::vector<FoundDevice> DeviceFiles::devices() const {
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

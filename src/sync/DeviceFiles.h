/// What the devices have left at a place, as far as it was read: which list is the latest, and what is to be
/// sent. The same for every kind of place.
#pragma once

#include "base/Result.h"
#include "sync/Carrier.h"
#include "sync/DeviceFile.h"
#include "sync/Mirror.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace quillo {

/// The place itself cannot be read. Says why, for the user; of its files that says nothing.
struct PlaceFailed {
    Error why;
};

/// Each device has a file of its own at the place (DeviceFile.h). What has such a name and cannot be read is
/// skipped with a line in the log, once for each reason.
///
/// This device's file is to be written where it has an older list than is outgoing, or the same stamp and
/// another list, or nothing that can be read. So a list from when the clock was ahead is not replaced by an
/// older one. A file of a format that is not known is never written over.
class DeviceFiles {
public:
    /// A file's bytes, or why it has none.
    using Bytes = std::variant<std::string, Error, PlaceFailed>;

    /// Gives those of a device's file, as they are now.
    using ReadBytes = std::function<Bytes(const Uuid&)>;

    /// `folder` is what the files lie in, for people.
    DeviceFiles(Device self, std::string folder, ReadBytes readBytes);

    const Uuid& self() const { return self_.id; }

    /// Reads the file of a device anew. Where the place fails, what is known of the file stays.
    Outcome read(const Uuid& device) { return take(device, readBytes_(device)); }

    /// The same, of bytes that have been read already.
    Outcome take(const Uuid& device, Bytes bytes);

    /// Only these devices have a file.
    void keep(const std::set<Uuid>& devices);

    /// Nothing is known of a device's file any more, or of any.
    void forget(const Uuid& device) { files_.erase(device); }
    void forgetAll() { files_.clear(); }

    /// What this device's file is to be, for that list; absent where it is right as it is. An error says why
    /// nothing can be sent.
    Result<std::optional<std::string>> toBeWritten(const StampedBytes& list) const;

    /// The file of this device has that list by now.
    void hasBeenWritten(const StampedBytes& list);

    /// Tells the mirror of the latest list, and the exchange of that and of the devices. Where the place
    /// fails meanwhile, the mirror keeps what it received.
    void tell(Mirror& mirror, Exchange& exchange);

private:
    /// What was found under a device's name.
    struct File {
        std::variant<FoundDevice, UnknownFormat, Error> content;
        std::optional<Data> items; ///< kept of the latest and of this device's
        bool itemsChecked = false;
        std::optional<Error> complaint; ///< what the log has been told last
    };
    using Files = std::map<Uuid, File>;

    void skip(const Uuid& device, File& file, const Error& why) const;
    void dropItems();
    Result<File*> latest();
    Files::value_type* best();
    bool isBefore(const Files::value_type& left, const Files::value_type& right) const;
    std::vector<FoundDevice> devices() const;

    const Device self_;
    const std::string folder_;
    const ReadBytes readBytes_;
    Files files_;
};

} // namespace quillo

/// Lists that travel through a folder which something else keeps in step between machines: Syncthing, a
/// client of Nextcloud or Dropbox, a network's file system, a stick that is carried.
#pragma once

#include "sync/Carrier.h"
#include "sync/FolderWatch.h"

#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <optional>
#include <variant>
#include <vector>

namespace quillo {

/// Each device has a file of its own in `<root>/quillo/v1` (DeviceFile.h), so no two machines ever write the
/// same one. Names of other forms are nobody's concern. What has such a name and cannot be read is skipped
/// with a line in the log, and read again when it has changed.
///
/// The folder is made when it is set up and never again: where it is missing, a file system is not mounted,
/// and what was written there now would be in the wrong place, or hidden.
///
/// This device's file is written where it has an older list than is outgoing, or the same stamp and another
/// list, or nothing that can be read. So a list from when the clock was ahead is not replaced by an older
/// one. A file of a format that is not known is never written over.
class FolderCarrier final : public Carrier {
public:
    enum class SetUp { Yes, No };

    /// `root` is absolute and normal. With SetUp::Yes the first exchange makes `<root>/quillo/v1`; `root`
    /// itself must be there.
    FolderCarrier(const std::filesystem::path& root, Device self, SetUp setUp);

    Exchange exchange(Mirror& mirror) override;
    void awaitNews(int wake) override { watch_.await(wake); }

private:
    /// What was found under a device's name.
    struct File {
        struct stat status {}; ///< when it was read
        bool settled = false;  ///< whatever changes it from now on changes its status
        std::variant<FoundDevice, UnknownFormat, Error> content;
        std::optional<Data> items; ///< kept of the latest and of this device's
        bool itemsChecked = false;
        std::optional<Error> complaint; ///< what the log has been told last
    };
    using Files = std::map<Uuid, File>;

    Outcome makeFolder() const;
    Outcome look();
    void read(const Uuid& device, File& file) const;
    void skip(const Uuid& device, File& file, const Error& why) const;
    Outcome send(const StampedBytes& list);
    bool hasBeenSent(const StampedBytes& list);
    File* latest();
    bool isBefore(const Files::value_type& left, const Files::value_type& right) const;
    std::vector<FoundDevice> devices() const;

    const std::filesystem::path root_;
    const std::filesystem::path folder_;
    const Device self_;
    bool toBeMade_;
    FolderWatch watch_;
    Files files_;
};

} // namespace quillo

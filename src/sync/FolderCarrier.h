/// Lists that travel through a folder which something else keeps in step between machines: Syncthing, a
/// client of Nextcloud or Dropbox, a network's file system, a stick that is carried.
#pragma once

#include "sync/Carrier.h"
#include "sync/DeviceFiles.h"
#include "sync/FolderWatch.h"

#include <sys/stat.h>

#include <filesystem>
#include <map>

namespace quillo {

/// The files lie in `<root>/quillo/v1`. Names of other forms are nobody's concern. A file that cannot be read
/// is read again when it has changed.
///
/// The folder is made when it is set up and never again: where it is missing, a file system is not mounted,
/// and what was written there now would be in the wrong place, or hidden.
class FolderCarrier final : public Carrier {
public:
    enum class SetUp { Yes, No };

    /// `root` is absolute and normal. With SetUp::Yes the first exchange makes `<root>/quillo/v1`; `root`
    /// itself must be there.
    FolderCarrier(const std::filesystem::path& root, Device self, SetUp setUp);

    Exchange exchange(Mirror& mirror) override;
    void awaitNews(int wake) override { watch_.await(wake); }
    Result<DeviceFile> fileOf(const Uuid& device) override;
    Outcome forget(const Uuid& device, double stamp) override;

private:
    /// A file, when it was read.
    struct Seen {
        struct stat status {};
        bool settled = false; ///< whatever changes it from now on changes its status
    };

    Outcome makeFolder() const;
    Outcome look();
    DeviceFiles::Bytes read(const Uuid& device);
    Outcome send(const StampedBytes& list);

    const std::filesystem::path root_;
    const std::filesystem::path folder_;
    bool toBeMade_;
    FolderWatch watch_;
    std::map<Uuid, Seen> seen_;
    DeviceFiles files_;
};

} // namespace quillo

/// Notices that something happens in a folder, also where the folder itself comes and goes.
#pragma once

#include "base/Descriptor.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

namespace quillo {

/// Looks after files with certain names in one folder. Belongs to one thread.
///
/// Where the folder is not there, its nearest parent that is is watched for it, and the table of mounted file
/// systems, as most folders that go away are on one. Where the kernel watches nothing (it has too few watches
/// left, or another machine writes what is in the folder), only that table is.
class FolderWatch {
public:
    using IsOfInterest = std::function<bool(std::string_view name)>;

    FolderWatch(std::filesystem::path folder, IsOfInterest isOfInterest);

    /// Begins to watch what is there now. To be called before each look at the folder: what happens from then
    /// on makes await() return.
    void follow();

    /// Returns when something may have happened since follow(), or `wake` can be read.
    void await(int wake);

private:
    bool watch(const std::filesystem::path& folder, std::uint32_t events);
    bool readEvents();
    std::filesystem::path wayDown(const std::filesystem::path& parent) const;

    const std::filesystem::path folder_;
    const IsOfInterest isOfInterest_;
    Descriptor inotify_;
    Descriptor mounts_;
    int watch_ = -1;
    std::filesystem::path watched_; ///< the folder, or a parent
};

} // namespace quillo

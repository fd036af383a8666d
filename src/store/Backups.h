/// Copies of what is about to be overwritten or removed, as files beside the preferences: the last line
/// between a mistake and a lost task.
#pragma once

#include "base/Clock.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace quillo {

/// Used by one thread at a time (the store's persistence queue), as it waits for the disk. A file gets its
/// name only once it is whole and on the disk, so a crash leaves no half one behind. Files are for the user
/// alone (0600). What fails is logged.
class Backups {
public:
    /// How many earlier lists are kept; the oldest make room.
    static constexpr std::size_t keptLists = 10;

    /// `dataFolder` exists; `clock` outlives this.
    Backups(std::filesystem::path dataFolder, const Clock& clock);

    /// Keeps a list (stored form) as backups/<time>.json, for example backups/20250304T094100.250Z.json, in
    /// UTC. Names sort by age: where the clock stands still or went back, the new file is named a millisecond
    /// after the newest. False if that failed.
    bool keepList(std::string_view bytes);

    /// Keeps a value that could not be decoded as damaged-<time>-<key>. Such files are never removed. False
    /// if that failed.
    bool keepDamaged(std::string_view key, std::string_view bytes);

private:
    const std::filesystem::path dataFolder_;
    const Clock& clock_;
};

} // namespace quillo

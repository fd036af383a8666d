/// Copies of what is about to be overwritten or removed, as files beside the preferences: the last line
/// between a mistake and a lost task.
#pragma once

#include "base/Clock.h"
#include "base/Result.h"
#include "base/UtcTime.h"
#include "ports/KeyValueStore.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

/// For threads that may wait for the disk. Lists are kept by one of them (the store's persistence queue),
/// damaged values of a key by one. A file gets its name only once it is whole and on the disk, so a crash
/// leaves no half one behind. Files are for the user alone (0600). What fails to be kept is logged.
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

    /// When the kept lists were kept, the latest first.
    std::vector<UtcMilliseconds> listTimes() const;

    /// The list (stored form, unchecked) of that place among them, from 1; an error in words for the user if
    /// there is none, or it cannot be read.
    Result<Data> list(std::size_t which) const;

    /// Keeps a value that could not be decoded as damaged-<time>-<key>. Such files are never removed. False
    /// if that failed.
    bool keepDamaged(std::string_view key, std::string_view bytes);

private:
    const std::filesystem::path dataFolder_;
    const Clock& clock_;
};

} // namespace quillo

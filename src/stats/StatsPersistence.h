/// Where the statistics are kept: in the preferences.
#pragma once

#include "model/Award.h"
#include "model/SpeedRecord.h"
#include "ports/Preferences.h"
#include "stats/DailyCounts.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace quillo {

/// Everything that is kept.
struct Statistics {
    std::int64_t lifetimeCompletions = 0; ///< at least 0
    std::optional<SpeedRecord> fastest;
    std::optional<SpeedRecord> slowest;
    DailyCounts dailyCounts;
    std::set<Award> earnedAwards;
};

/// The half of the statistics that waits for disks. load() runs once, on the main thread, before anything
/// else; from then on everything runs on the store's persistence queue.
class StatsPersistence {
public:
    /// Keeps a copy of the bytes found under `key`; false if that failed.
    using KeepDamaged = std::function<bool(std::string_view key, std::string_view bytes)>;

    /// `preferences` outlives this. Bytes that load() could not read are given to `keepDamaged`, if there is
    /// one, before the first save over them; while that fails they are not saved over.
    StatsPersistence(Preferences& preferences, KeepDamaged keepDamaged);

    /// What is kept. Each value that is not there, or cannot be read, is that of the very beginning.
    Statistics load();

    /// Writes all of it together, except for what is absent or cannot be encoded: that stays as it was.
    void save(const Statistics& statistics);

    /// Removes everything that save() writes, readable or not.
    void removeAll();

private:
    template <class T>
    std::optional<T> read(std::string_view key, std::optional<T> (*decode)(std::string_view));
    bool mayWrite(std::string_view key);

    Preferences& preferences_;
    const KeepDamaged keepDamaged_;
    std::map<std::string, Data, std::less<>> damaged_; ///< what load() could not read and nobody keeps yet
};

} // namespace quillo

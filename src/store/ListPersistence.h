/// Where the list is kept: in the preferences, and in the cloud store while sync is on.
#pragma once

#include "base/Result.h"
#include "ports/CloudStore.h"
#include "ports/Preferences.h"
#include "store/Backups.h"
#include "store/TaskList.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace quillo {

/// What was kept: a list and the moment, in seconds since 1970, of the change that led to it.
struct StampedList {
    TaskList items;
    double stamp = 0;
};

/// A list that another machine left in the cloud store, with the very bytes in which it came.
struct ReceivedList {
    StampedList list;
    Data bytes;
};

/// The half of the store that waits for disks. load() runs once, on the main thread, before anything else;
/// from then on everything runs on the store's persistence queue.
///
/// A stamp is foreign, too: one that is not finite, or negative, or no double at all, counts as 0, the stamp
/// of a list that never was.
///
/// A list in the preferences that cannot be decoded may still hold tasks that someone can recover. So it is
/// copied aside before the first save over it, and as long as that fails (a full disk) nothing is saved: each
/// save tries again. The new tasks are meanwhile in memory only, as they would be without room for a save.
class ListPersistence {
public:
    /// The references outlive this; without `backups` nothing is copied aside.
    ListPersistence(Preferences& preferences, CloudStore& cloud, Backups* backups);

    /// The list in the preferences; an empty one with stamp 0 where there is none or it cannot be decoded.
    StampedList load();

    /// Whether load() found a list that it could not read.
    bool foundDamaged() const { return damaged_.has_value(); }

    /// Writes list and stamp together, to the preferences and, if `toCloud`, to the cloud store; or nothing
    /// anywhere, see lastSave().
    void save(const StampedList& list, bool toCloud);

    /// Why the last save or adoption wrote nothing, if so: the list cannot be encoded, or a damaged one not
    /// be copied aside. What becomes of a list once it is handed to the preferences is theirs to tell.
    const Outcome& lastSave() const { return lastSave_; }

    /// The list in the cloud store, if it can be decoded and its stamp is greater than that of `local`. Where
    /// it equals `local`, what is returned shares its tasks with it.
    std::optional<ReceivedList> newerInCloud(const StampedList& local) const;

    /// Writes a received list to the preferences, stamp and bytes as they came, and nothing to the cloud
    /// store.
    void adopt(const ReceivedList& received);

    /// Writes list and stamp to the cloud store only; or nothing, if the list cannot be encoded.
    void push(const StampedList& list);

    /// Backs up a list that is about to be replaced. False if that failed.
    bool keepEarlier(const TaskList& earlier);

    /// The kept earlier list of that place, the latest 1; an error in words for the user if there is none, or
    /// it cannot be read.
    Result<TaskList> earlier(std::size_t which) const;

    /// When the earlier lists were kept, the latest first.
    std::vector<UtcMilliseconds> earlierTimes() const;

    void synchronizeCloud();

private:
    Outcome write(const StampedList& list, bool toCloud);
    Outcome keep(const Data& bytes, double stamp);
    void upload(const Data& bytes, double stamp);
    void remember(Outcome outcome);
    bool putDamagedAside();

    Preferences& preferences_;
    CloudStore& cloud_;
    Backups* const backups_;
    std::optional<Data> damaged_; ///< what load() could not decode, until it is copied aside
    Outcome lastSave_ = success();
};

} // namespace quillo

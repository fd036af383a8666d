/// Who may write the preferences: one process at a time.
#pragma once

#include "base/Result.h"

#include <chrono>
#include <filesystem>

namespace quillo {

/// Holds the file `preferences.lock` of a folder locked, from acquire() until it is dropped or the process
/// ends, however it ends. The file holds the process number of its holder and is never deleted: a process
/// that waited for a deleted file would lock something nobody else sees.
class PreferencesLock {
public:
    /// Waits at most `patience` for whoever holds the lock. Makes the folder where it is missing. The error
    /// is one line for the user: who holds the lock, or why there can be none (a folder that cannot be
    /// written).
    static Result<PreferencesLock> acquire(const std::filesystem::path& folder,
                                           std::chrono::milliseconds patience);

    PreferencesLock(PreferencesLock&& other) noexcept;
    PreferencesLock& operator=(PreferencesLock&& other) noexcept;
    ~PreferencesLock();

private:
    explicit PreferencesLock(int descriptor) : descriptor_(descriptor) {}
    void release();

    int descriptor_; ///< Of the locked file; -1 once moved from.
};

} // namespace quillo

/// Who may write the preferences: one process at a time.
#pragma once

#include "base/Result.h"

#include <chrono>
#include <filesystem>
#include <optional>

namespace quillo {

/// Holds the file `preferences.lock` of a folder locked, from tryAcquire() until it is dropped or the process
/// ends, however it ends. The file holds the process number of its holder and is never deleted: a process
/// that waited for a deleted file would lock something nobody else sees.
class PreferencesLock {
public:
    /// Takes the lock if nobody holds it; absent if somebody does. Makes the folder where it is missing. The
    /// error is one line for the user: why there can be no lock (a folder that cannot be written).
    static Result<std::optional<PreferencesLock>> tryAcquire(const std::filesystem::path& folder);

    /// How often to try while somebody else holds it: the kernel does not tell when the lock is free.
    static constexpr std::chrono::milliseconds interval{10};

    /// One line for a user who waited in vain: who holds the lock of that folder.
    static Error heldByAnother(const std::filesystem::path& folder);

    PreferencesLock(PreferencesLock&& other) noexcept;
    PreferencesLock& operator=(PreferencesLock&& other) noexcept;
    ~PreferencesLock();

private:
    explicit PreferencesLock(int descriptor) : descriptor_(descriptor) {}
    void release();

    int descriptor_; ///< Of the locked file; -1 once moved from.
};

} // namespace quillo

/// How keeping in step fares, for people; kept in a file beside the preferences, for commands.
#pragma once

#include "base/Instant.h"
#include "sync/Carrier.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {

struct SyncStatus {
    std::optional<Instant> lastInStep;  ///< when all was sent and read last
    std::optional<std::string> problem; ///< why it is not in step now, in words for the user
    std::vector<FoundDevice> devices; ///< whose lists are at the place, the latest first, as far as is known

    friend bool operator==(const SyncStatus&, const SyncStatus&) = default;
};

/// Whether nothing was changed on a device for so long (365 days) that what it has left may be taken away.
bool isSilent(const FoundDevice& device, Instant now);

/// {"lastInStep":762774060.5,"problem":null,"devices":[{"device":"<UUID>","name":…,"app":…,"stamp":…}]};
/// lastInStep is in seconds since 2001.
std::string encodeSyncStatus(const SyncStatus& status);

/// Reads it, all of it or nothing.
std::optional<SyncStatus> decodeSyncStatus(std::string_view bytes);

/// `<folder>/sync-status.json`. Writing it leaves whoever reads it the old one or the new one; what cannot be
/// written is logged. What cannot be read counts as nothing.
void writeSyncStatus(const std::filesystem::path& folder, const SyncStatus& status);
SyncStatus readSyncStatus(const std::filesystem::path& folder);

} // namespace quillo

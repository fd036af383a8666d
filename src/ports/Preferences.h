/// The user's preferences: where everything this program remembers on this machine is kept.
#pragma once

#include "ports/KeyValueStore.h"

namespace quillo {

/// One process at a time writes them; see KeyValueStore for what reading and writing promise.
class Preferences : public KeyValueStore {};

/// The keys under which the services keep their values.
namespace preference_keys {

inline constexpr std::string_view items = "Quillo.items.v1"; ///< data: task array, stored form
inline constexpr std::string_view itemsStamp =
    "Quillo.items.v1.stamp"; ///< double: seconds since 1970 of the write
inline constexpr std::string_view cloudSync = "Quillo.iCloudSync"; ///< boolean: sync is on; on where absent

inline constexpr std::string_view statsLifetime = "Quillo.stats.lifetime"; ///< integer: tasks completed, ever
inline constexpr std::string_view statsFastest = "Quillo.stats.fastest";   ///< data: SpeedRecord
inline constexpr std::string_view statsSlowest = "Quillo.stats.slowest";   ///< data: SpeedRecord
inline constexpr std::string_view statsDaily = "Quillo.stats.daily";       ///< data: DailyCounts
inline constexpr std::string_view statsAwards = "Quillo.stats.awards";     ///< data: awards' raw values
inline constexpr std::string_view statsEnabled =
    "Quillo.stats.enabled"; ///< boolean: completions are counted; on where absent

inline constexpr std::string_view reviewCompletions =
    "Quillo.review.lifetimeCompletions"; ///< integer: completions, whatever becomes of the statistics
inline constexpr std::string_view reviewLastPromptedVersion =
    "Quillo.review.lastPromptedVersion"; ///< text: version that asked for feedback last
inline constexpr std::string_view reviewPending =
    "Quillo.linux.review.pending"; ///< boolean: asking for feedback is due; off where absent

inline constexpr std::string_view reminders = "Quillo.linux.reminders.v1"; ///< data: the book of reminders

inline constexpr std::string_view updatesAutomatic =
    "Quillo.linux.updates.automatic"; ///< boolean: newer releases are looked for daily; off where absent
inline constexpr std::string_view updatesLastCheck =
    "Quillo.linux.updates.lastCheck"; ///< double: seconds since 1970
inline constexpr std::string_view updatesSkipped =
    "Quillo.linux.updates.skipped"; ///< text: build that is not to be offered unasked
inline constexpr std::string_view updatesHighestSeen =
    "Quillo.linux.updates.highestSeen"; ///< text: the highest build that a genuine list of releases had

inline constexpr std::string_view languageModel =
    "Quillo.linux.languageModel"; ///< text: a LanguageModelChoice; the embedded one where absent

inline constexpr std::string_view syncPlace =
    "Quillo.linux.sync.place"; ///< text: a SyncPlace; none where absent
inline constexpr std::string_view syncDevice =
    "Quillo.linux.sync.device"; ///< text: by what other devices know this one, see thisDevice()

inline constexpr std::string_view hotKey = "Quillo.hotkey.v1"; ///< data: HotKeyConfig

inline constexpr std::string_view launchAtLogin =
    "Quillo.launchAtLogin"; ///< boolean: the program starts at login, as far as it knows; off where absent

} // namespace preference_keys

} // namespace quillo

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

} // namespace preference_keys

} // namespace quillo

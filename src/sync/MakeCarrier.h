/// From a place to the way there.
#pragma once

#include "ports/Preferences.h"
#include "sync/Carrier.h"
#include "sync/SyncPlace.h"

#include <memory>

namespace quillo {

enum class PlaceIs { New, SetUp };

/// Null where there is no place. In one that is new the first exchange makes what it needs there. The
/// preferences are asked, at once, by what the others know this device.
std::unique_ptr<Carrier> makeCarrier(const SyncPlace& place, PlaceIs is, Preferences& preferences);

} // namespace quillo

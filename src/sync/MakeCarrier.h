/// From a place to the way there.
#pragma once

#include "ports/Preferences.h"
#include "sync/Carrier.h"
#include "sync/Passwords.h"
#include "sync/SyncPlace.h"

#include <memory>

namespace quillo {

enum class PlaceIs { New, SetUp };

/// Null where there is no place. In one that is new the first exchange makes what it needs there. The
/// preferences are asked, at once, by what the others know this device; the passwords, which may be null,
/// when a server wants one.
std::unique_ptr<Carrier> makeCarrier(const SyncPlace& place, PlaceIs is, Preferences& preferences,
                                     std::shared_ptr<Passwords> passwords = nullptr);

} // namespace quillo

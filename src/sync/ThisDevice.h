/// By what the other devices know this one.
#pragma once

#include "ports/Preferences.h"
#include "sync/DeviceFile.h"

#include <string>

namespace quillo {

/// What the system calls itself for good (machine-id); empty where it has no such name.
std::string machineId();

/// The identifier from the preferences, if it was made on the machine with that name; else a new one, which
/// is kept there. So a copy of a home on another machine is another device. The preferences hold no more of
/// the machine's name than a hash.
Device thisDevice(Preferences& preferences, const std::string& machine = machineId());

} // namespace quillo

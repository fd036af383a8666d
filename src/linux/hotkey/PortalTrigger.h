/// A shortcut in the words of the desktop portals.
#pragma once

#include "model/HotKeyConfig.h"

#include <optional>
#include <string>

namespace quillo {

/// Such as "CTRL+ALT+LOGO+t" (the Shortcuts standard,
/// https://specifications.freedesktop.org/shortcuts-spec). Absent where the key is on no keyboard, or there
/// is no modifier.
std::optional<std::string> portalTrigger(const HotKeyConfig& config);

} // namespace quillo

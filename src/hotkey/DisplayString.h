/// A keyboard shortcut as people read it.
#pragma once

#include "model/HotKeyConfig.h"

#include <string>

namespace quillo {

/// The modifiers' glyphs, always in the order ⌃⌥⇧⌘, and the key's name: "⌃⌥⌘T". A key without a name is
/// "Key " and its number. UTF-8.
std::string displayString(const HotKeyConfig& config);

} // namespace quillo

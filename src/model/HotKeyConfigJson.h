/// The stored form of the keyboard shortcut.
#pragma once

#include "model/HotKeyConfig.h"

#include <optional>
#include <string>
#include <string_view>

namespace quillo {

/// Reads {"keyCode":17,"modifiers":6400}. The bytes are foreign: absent unless they are well-formed JSON to
/// the last one, with both keys there and each a plain integer of 32 bits without a sign. Keys may come in
/// any order and unknown ones are skipped. Any thread.
std::optional<HotKeyConfig> decodeHotKeyConfig(std::string_view bytes);

/// Writes what decodeHotKeyConfig reads. Any thread.
std::string encodeHotKeyConfig(const HotKeyConfig& config);

} // namespace quillo

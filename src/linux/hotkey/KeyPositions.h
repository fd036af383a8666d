/// Where a shortcut's keys are on keyboards as Linux knows them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillo {

struct KeyPosition {
    std::uint8_t evdevCode = 0; ///< the kernel's number of that place: KEY_... in linux/input-event-codes.h

    /// What an American keyboard writes there, by its keysym's name
    /// (https://xkbcommon.org/doc/current/xkbcommon-keysyms_8h.html).
    std::string_view keysymName;
};

/// The place that HotKeyConfig::keyCode names. Absent for numbers that name none, and for keys that make no
/// shortcut by themselves, such as modifiers.
std::optional<KeyPosition> keyPosition(std::uint32_t keyCode);

} // namespace quillo

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

/// The other way round, by the place's number as the X server and the compositors have it
/// (QKeyEvent::nativeScanCode()). Absent for keys that make no shortcut.
std::optional<std::uint32_t> keyCodeAt(std::uint32_t scanCode);

/// The first numbers of the X server stand for no key; the others are the kernel's in their order.
inline constexpr std::uint32_t firstScanCode = 8;

} // namespace quillo

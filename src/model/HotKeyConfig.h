/// The keyboard shortcut that opens the quick-add panel from anywhere.
#pragma once

#include <cstdint>

namespace quillo {

/// The bits of HotKeyConfig::modifiers.
namespace hot_key_modifiers {

inline constexpr std::uint32_t command = 0x0100; ///< the Super key
inline constexpr std::uint32_t shift = 0x0200;
inline constexpr std::uint32_t option = 0x0800; ///< the Alt key
inline constexpr std::uint32_t control = 0x1000;

} // namespace hot_key_modifiers

/// A value, compared field by field. What was stored is foreign: any numbers may be there.
struct HotKeyConfig {
    /// A place on the keyboard, whatever the layout writes there: the virtual key codes of an ANSI keyboard,
    /// in which 0 is A, 1 is S, 17 is T and 49 is Space.
    std::uint32_t keyCode = 17;

    /// A sum of hot_key_modifiers.
    std::uint32_t modifiers =
        hot_key_modifiers::control | hot_key_modifiers::option | hot_key_modifiers::command;

    friend bool operator==(const HotKeyConfig&, const HotKeyConfig&) = default;
};

} // namespace quillo

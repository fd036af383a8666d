/// From the modifiers of a keyboard event to those of a shortcut.
#pragma once

#include <cstdint>

namespace quillo {

/// The flags by which a window's keyboard events say which keys were held. There may be others.
namespace modifier_flags {

inline constexpr std::uint32_t shift = 0x0002'0000;
inline constexpr std::uint32_t control = 0x0004'0000;
inline constexpr std::uint32_t option = 0x0008'0000;
inline constexpr std::uint32_t command = 0x0010'0000;

} // namespace modifier_flags

/// The same modifiers as HotKeyConfig::modifiers has them; other flags are dropped.
std::uint32_t modifierMask(std::uint32_t flags);

} // namespace quillo

#include "hotkey/ModifierMask.h"

#include "model/HotKeyConfig.h"

namespace quillo {

std::uint32_t modifierMask(std::uint32_t flags) {
    std::uint32_t mask = 0;
    if (flags & modifier_flags::control)
        mask |= hot_key_modifiers::control;
    if (flags & modifier_flags::option)
        mask |= hot_key_modifiers::option;
    if (flags & modifier_flags::shift)
        mask |= hot_key_modifiers::shift;
    if (flags & modifier_flags::command)
        mask |= hot_key_modifiers::command;
    return mask;
}

} // namespace quillo

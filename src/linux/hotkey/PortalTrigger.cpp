#include "linux/hotkey/PortalTrigger.h"

#include "linux/hotkey/KeyPositions.h"

namespace quillo {

std::optional<std::string> portalTrigger(const HotKeyConfig& config) {
    const auto position = keyPosition(config.keyCode);
    std::string trigger;
    if (config.modifiers & hot_key_modifiers::control)
        trigger += "CTRL+";
    if (config.modifiers & hot_key_modifiers::option)
        trigger += "ALT+";
    if (config.modifiers & hot_key_modifiers::shift)
        trigger += "SHIFT+";
    if (config.modifiers & hot_key_modifiers::command)
        trigger += "LOGO+";
    if (!position || trigger.empty())
        return std::nullopt;
    return trigger += position->keysymName;
}

} // namespace quillo

#include "hotkey/DisplayString.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillo {

namespace {

struct NamedKeys {
    std::uint32_t first; ///< the code of the first name; the others follow
    std::array<std::string_view, 12> names;
};

constexpr NamedKeys namedKeys[] = {
    {0, {"A", "S", "D", "F", "H", "G", "Z", "X", "C", "V"}},
    {11, {"B", "Q", "W", "E", "R", "Y", "T"}},
    {18, {"1", "2", "3", "4", "6", "5", "=", "9", "7", "-", "8", "0"}},
    {30, {"]", "O", "U", "[", "I", "P", "↩", "L", "J", "'", "K", ";"}},
    {42, {"\\", ",", "/", "N", "M", ".", "⇥", "Space", "`"}},
    {53, {"⎋"}},
    {96, {"F5", "F6", "F7", "F3", "F8", "F9"}},
    {103, {"F11"}},
    {109, {"F10"}},
    {111, {"F12"}},
    {118, {"F4"}},
    {120, {"F2"}},
    {122, {"F1", "←", "→", "↓", "↑"}},
};

/// Empty if it has none.
std::string_view keyName(std::uint32_t keyCode) {
    for (const NamedKeys& keys : namedKeys) {
        if (keyCode >= keys.first && keyCode - keys.first < keys.names.size() &&
            !keys.names[keyCode - keys.first].empty())
            return keys.names[keyCode - keys.first];
    }
    return {};
}

} // namespace

std::string displayString(const HotKeyConfig& config) {
    std::string text;
    if (config.modifiers & hot_key_modifiers::control)
        text += "⌃";
    if (config.modifiers & hot_key_modifiers::option)
        text += "⌥";
    if (config.modifiers & hot_key_modifiers::shift)
        text += "⇧";
    if (config.modifiers & hot_key_modifiers::command)
        text += "⌘";
    const std::string_view name = keyName(config.keyCode);
    if (name.empty())
        return text + "Key " + std::to_string(config.keyCode);
    return text += name;
}

} // namespace quillo

/// What the settings of a desktop mean for how programs look.
#pragma once

#include "ports/AppearanceSettings.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace quillo {

/// Of the settings portal: a namespace, and a key in it.
using SettingName = std::pair<std::string_view, std::string_view>;

/// As a desktop gave it: not yet known to make sense.
using SettingValue = std::variant<bool, std::uint32_t, double, std::string, std::array<double, 3>>;

using SettingValues = std::map<SettingName, SettingValue>;

/// Every setting that appearanceOf() looks at.
///
/// Those of org.freedesktop.appearance are published at
/// https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.Settings.html; the others are
/// the desktops' own, for portals that do not know the former yet.
namespace settings {
inline constexpr SettingName colourScheme{"org.freedesktop.appearance", "color-scheme"};
inline constexpr SettingName accentColour{"org.freedesktop.appearance", "accent-color"};
inline constexpr SettingName contrast{"org.freedesktop.appearance", "contrast"};
inline constexpr SettingName reducedMotion{"org.freedesktop.appearance", "reduced-motion"};
inline constexpr SettingName gnomeColourScheme{"org.gnome.desktop.interface", "color-scheme"};
inline constexpr SettingName gnomeTheme{"org.gnome.desktop.interface", "gtk-theme"};
inline constexpr SettingName gnomeAnimations{"org.gnome.desktop.interface", "enable-animations"};
inline constexpr SettingName kdeAnimations{"org.kde.kdeglobals.KDE", "AnimationDurationFactor"};

inline constexpr std::array all{colourScheme,      accentColour, contrast,        reducedMotion,
                                gnomeColourScheme, gnomeTheme,   gnomeAnimations, kdeAnimations};
} // namespace settings

/// What a user asks of this program alone; absent where the desktop decides.
struct AppearanceWishes {
    std::optional<bool> reduceMotion;
    std::optional<bool> reduceTransparency;
};

/// From QUILLO_REDUCE_MOTION and QUILLO_REDUCE_TRANSPARENCY: "1" or "0"; anything else is no wish.
AppearanceWishes appearanceWishes();

/// Values of another type than expected, or out of range, count as not given. Without a `compositor` nothing
/// can be seen through.
Appearance appearanceOf(const SettingValues& values, const AppearanceWishes& wishes, bool compositor);

} // namespace quillo

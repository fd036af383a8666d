#include "linux/appearance/AppearanceRules.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

namespace quillo {

namespace {

template <class T>
const T* valueOf(const SettingValues& values, const SettingName& name) {
    const auto found = values.find(name);
    return found != values.end() ? std::get_if<T>(&found->second) : nullptr;
}

template <class T>
bool is(const SettingValues& values, const SettingName& name, const T& wanted) {
    const T* value = valueOf<T>(values, name);
    return value != nullptr && *value == wanted;
}

/// The portal's numbers, of which unknown ones mean "no preference".
namespace colour_scheme {
constexpr std::uint32_t dark = 1;
constexpr std::uint32_t light = 2;
} // namespace colour_scheme
constexpr std::uint32_t higherContrast = 1;
constexpr std::uint32_t lessMotion = 1;

bool isDark(const SettingValues& values) {
    if (is(values, settings::colourScheme, colour_scheme::dark))
        return true;
    if (is(values, settings::colourScheme, colour_scheme::light))
        return false;
    if (is<std::string>(values, settings::gnomeColourScheme, "prefer-dark"))
        return true;
    if (is<std::string>(values, settings::gnomeColourScheme, "prefer-light"))
        return false;
    // Before there was a colour scheme, themes came in pairs: Adwaita and Adwaita-dark.
    const auto* theme = valueOf<std::string>(values, settings::gnomeTheme);
    return theme != nullptr && (theme->ends_with("-dark") || theme->ends_with("-Dark"));
}

/// KDE's factor for the length of animations: 0 is none. Handed on as text, as it stands in the file.
bool isWithoutAnimations(const SettingValues& values) {
    if (is(values, settings::kdeAnimations, 0.0))
        return true;
    const auto* text = valueOf<std::string>(values, settings::kdeAnimations);
    if (text == nullptr)
        return false;
    double factor = 1;
    const char* end = text->data() + text->size();
    const auto [rest, error] = std::from_chars(text->data(), end, factor);
    return error == std::errc() && rest == end && factor == 0;
}

bool isMotionReduced(const SettingValues& values) {
    return is(values, settings::reducedMotion, lessMotion) || is(values, settings::gnomeAnimations, false) ||
           isWithoutAnimations(values);
}

std::optional<Colour> accentOf(const SettingValues& values) {
    const auto* parts = valueOf<std::array<double, 3>>(values, settings::accentColour);
    // Written so that no number (NaN) is out of range too.
    if (parts == nullptr ||
        !std::all_of(parts->begin(), parts->end(), [](double part) { return part >= 0 && part <= 1; }))
        return std::nullopt;
    return Colour{(*parts)[0], (*parts)[1], (*parts)[2]};
}

std::optional<bool> wish(const char* variable) {
    const char* value = std::getenv(variable);
    if (value == nullptr)
        return std::nullopt;
    if (std::string_view(value) == "1")
        return true;
    if (std::string_view(value) == "0")
        return false;
    return std::nullopt;
}

} // namespace

AppearanceWishes appearanceWishes() {
    return {wish("QUILLO_REDUCE_MOTION"), wish("QUILLO_REDUCE_TRANSPARENCY")};
}

Appearance appearanceOf(const SettingValues& values, const AppearanceWishes& wishes, bool compositor) {
    Appearance appearance;
    appearance.dark = isDark(values);
    appearance.highContrast = is(values, settings::contrast, higherContrast);
    appearance.reduceMotion = wishes.reduceMotion.value_or(isMotionReduced(values));
    appearance.reduceTransparency =
        wishes.reduceTransparency.value_or(appearance.highContrast) || !compositor;
    appearance.accent = accentOf(values);
    return appearance;
}

} // namespace quillo

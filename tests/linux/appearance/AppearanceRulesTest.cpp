#include "linux/appearance/AppearanceRules.h"

#include "support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace quillo {
namespace {

using namespace std::string_literals;
using support::EnvironmentVariable;

Appearance appearanceOf(const SettingValues& values) {
    return quillo::appearanceOf(values, {}, true);
}

TEST(AppearanceRules, WantNothingSpecialWhereNothingIsSet) {
    EXPECT_EQ(appearanceOf({}), Appearance{});
}

TEST(AppearanceRules, TellDarkFromLight) {
    using namespace settings;
    struct Case {
        const char* name;
        SettingValues values;
        bool dark;
    };
    const std::vector<Case> cases{
        {"portal dark", {{colourScheme, 1U}}, true},
        {"portal light", {{colourScheme, 2U}}, false},
        {"portal without preference", {{colourScheme, 0U}}, false},
        {"unknown number", {{colourScheme, 7U}}, false},
        {"of another type", {{colourScheme, "dark"s}}, false},
        {"GNOME dark", {{gnomeColourScheme, "prefer-dark"s}}, true},
        {"GNOME dark, portal without preference",
         {{colourScheme, 0U}, {gnomeColourScheme, "prefer-dark"s}},
         true},
        {"GNOME dark, portal light", {{colourScheme, 2U}, {gnomeColourScheme, "prefer-dark"s}}, false},
        {"GNOME default", {{gnomeColourScheme, "default"s}}, false},
        {"dark theme", {{gnomeTheme, "Adwaita-dark"s}}, true},
        {"dark theme, capital", {{gnomeTheme, "Yaru-Dark"s}}, true},
        {"dark theme, default scheme", {{gnomeColourScheme, "default"s}, {gnomeTheme, "Arc-dark"s}}, true},
        {"dark theme, GNOME light", {{gnomeColourScheme, "prefer-light"s}, {gnomeTheme, "Arc-dark"s}}, false},
        {"light theme", {{gnomeTheme, "Darkness"s}}, false},
        {"empty theme", {{gnomeTheme, ""s}}, false},
    };
    for (const Case& each : cases)
        EXPECT_EQ(appearanceOf(each.values).dark, each.dark) << each.name;
}

TEST(AppearanceRules, TakeAnAccentWithinItsRangeOnly) {
    const auto accent = [](double red, double green, double blue) {
        return appearanceOf({{settings::accentColour, std::array{red, green, blue}}}).accent;
    };
    EXPECT_EQ(accent(0.2, 0.4, 1), (Colour{0.2, 0.4, 1}));
    EXPECT_EQ(accent(0, 0, 0), (Colour{0, 0, 0}));
    EXPECT_EQ(accent(-1, -1, -1), std::nullopt);
    EXPECT_EQ(accent(0.5, 0.5, 1.001), std::nullopt);
    EXPECT_EQ(accent(std::numeric_limits<double>::quiet_NaN(), 0, 0), std::nullopt);
    EXPECT_EQ(accent(0, std::numeric_limits<double>::infinity(), 0), std::nullopt);
    EXPECT_EQ(appearanceOf({{settings::accentColour, 3U}}).accent, std::nullopt);
}

TEST(AppearanceRules, HighContrastIsSolid) {
    const Appearance high = appearanceOf({{settings::contrast, 1U}});
    EXPECT_TRUE(high.highContrast);
    EXPECT_TRUE(high.reduceTransparency);
    EXPECT_FALSE(appearanceOf({{settings::contrast, 0U}}).highContrast);
    EXPECT_FALSE(appearanceOf({{settings::contrast, 2U}}).highContrast);
    EXPECT_FALSE(appearanceOf({{settings::contrast, true}}).highContrast);
}

TEST(AppearanceRules, ReduceMotionWhereADesktopAsksForIt) {
    using namespace settings;
    struct Case {
        const char* name;
        SettingValues values;
        bool reduced;
    };
    const std::vector<Case> cases{
        {"portal", {{reducedMotion, 1U}}, true},
        {"portal without preference", {{reducedMotion, 0U}}, false},
        {"unknown number", {{reducedMotion, 2U}}, false},
        {"GNOME without animations", {{gnomeAnimations, false}}, true},
        {"GNOME with animations", {{gnomeAnimations, true}}, false},
        {"GNOME, of another type", {{gnomeAnimations, "false"s}}, false},
        {"portal without preference, GNOME without animations",
         {{reducedMotion, 0U}, {gnomeAnimations, false}},
         true},
        {"KDE instant", {{kdeAnimations, "0"s}}, true},
        {"KDE instant, with a point", {{kdeAnimations, "0.0"s}}, true},
        {"KDE instant, a number", {{kdeAnimations, 0.0}}, true},
        {"KDE faster", {{kdeAnimations, "0.5"s}}, false},
        {"KDE, no number", {{kdeAnimations, "0x"s}}, false},
        {"KDE, empty", {{kdeAnimations, ""s}}, false},
    };
    for (const Case& each : cases)
        EXPECT_EQ(appearanceOf(each.values).reduceMotion, each.reduced) << each.name;
}

TEST(AppearanceRules, NothingIsSeenThroughWithoutACompositor) {
    EXPECT_TRUE(quillo::appearanceOf({}, {}, false).reduceTransparency);
    EXPECT_TRUE(quillo::appearanceOf({}, {std::nullopt, false}, false).reduceTransparency);
    EXPECT_FALSE(quillo::appearanceOf({}, {}, true).reduceTransparency);
}

TEST(AppearanceRules, WishesForThisProgramGoBeforeTheDesktop) {
    const SettingValues still{{settings::reducedMotion, 1U}, {settings::contrast, 1U}};
    EXPECT_FALSE(quillo::appearanceOf(still, {false, false}, true).reduceMotion);
    EXPECT_FALSE(quillo::appearanceOf(still, {false, false}, true).reduceTransparency);
    EXPECT_TRUE(quillo::appearanceOf({}, {true, true}, true).reduceMotion);
    EXPECT_TRUE(quillo::appearanceOf({}, {true, true}, true).reduceTransparency);
}

TEST(AppearanceRules, WishesAreReadFromTheEnvironment) {
    const EnvironmentVariable motion("QUILLO_REDUCE_MOTION", "1");
    const EnvironmentVariable transparency("QUILLO_REDUCE_TRANSPARENCY", "0");
    EXPECT_EQ(appearanceWishes().reduceMotion, true);
    EXPECT_EQ(appearanceWishes().reduceTransparency, false);
}

TEST(AppearanceRules, OtherWordsInTheEnvironmentAreNoWish) {
    const EnvironmentVariable motion("QUILLO_REDUCE_MOTION", "perhaps");
    const EnvironmentVariable transparency("QUILLO_REDUCE_TRANSPARENCY", "");
    EXPECT_EQ(appearanceWishes().reduceMotion, std::nullopt);
    EXPECT_EQ(appearanceWishes().reduceTransparency, std::nullopt);
}

} // namespace
} // namespace quillo

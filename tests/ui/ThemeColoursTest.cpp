#include "ui/theme/ThemeColours.h"

#include "ui/theme/Contrast.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>

namespace quillo {
namespace {

struct Look {
    const char* name;
    bool dark;
    bool highContrast;
    bool reduceTransparency;
};

void PrintTo(const Look& look, std::ostream* out) {
    *out << look.name;
}

constexpr std::array looks{
    Look{"light", false, false, false},     Look{"dark", true, false, false},
    Look{"lightSolid", false, false, true}, Look{"darkSolid", true, false, true},
    Look{"lightHigh", false, true, false},  Look{"darkHigh", true, true, false},
};

// What desktops offer, and the extremes.
constexpr std::array accents{"#3584e4", "#2190a4", "#3a944a", "#c88800", "#ed5b00", "#e62d42",
                             "#d56199", "#9141ac", "#6f8396", "#308cc6", "#ffff00", "#00ff00",
                             "#0000ff", "#000000", "#ffffff", "#808080", "#000080"};

class ThemeColoursInEveryLook : public testing::TestWithParam<std::tuple<Look, const char*>> {
protected:
    const Look look = std::get<0>(GetParam());
    const QColor accent{std::get<1>(GetParam())};
    const Appearance appearance{look.dark, look.highContrast, false, look.reduceTransparency, std::nullopt};
    const ThemeColours colours = themeColours(appearance, accent);
    const double wanted = look.highContrast ? 7 : 4.5;
};

TEST_P(ThemeColoursInEveryLook, TextCanBeReadWhereverItStands) {
    const std::array<std::pair<const char*, QColor>, 7> texts{{
        {"text", colours.text},
        {"secondary", colours.secondary},
        {"faintText", colours.faintText},
        {"placeholder", colours.placeholder},
        {"accentLabel", colours.accentLabel},
        {"todayText", colours.todayText},
        {"overdueText", colours.overdueText},
    }};
    const std::array<std::pair<std::string, QColor>, 7> places{{
        {"window", colours.window},
        {"field", colours.field},
        {"material over white", over(colours.material, Qt::white)},
        {"material over black", over(colours.material, Qt::black)},
        {"bar", over(colours.bar, over(colours.material, Qt::black))},
        {"hover on material", over(colours.hover, over(colours.material, Qt::black))},
        {"hover on window", over(colours.hover, colours.window)},
    }};
    for (const auto& [textName, text] : texts) {
        EXPECT_EQ(text.alpha(), 255) << textName;
        for (const auto& [placeName, place] : places)
            EXPECT_GE(contrastRatio(text, place), wanted) << textName << " on " << placeName;
    }
}

TEST_P(ThemeColoursInEveryLook, WhatStandsOnTheAccentCanBeSeen) {
    EXPECT_GE(contrastRatio(colours.accentText, colours.accent), 4.5);
    EXPECT_GE(contrastRatio(colours.accentSymbol, colours.accent), 3.0);
}

TEST_P(ThemeColoursInEveryLook, OutlinesCanBeSeen) {
    for (const QColor& behind : {QColor(Qt::white), QColor(Qt::black)}) {
        const QColor material = over(colours.material, behind);
        EXPECT_GE(contrastRatio(colours.focusRing, material), 3.0);
        EXPECT_GE(contrastRatio(over(colours.faint, material), material), look.highContrast ? 7.0 : 3.0);
    }
}

TEST_P(ThemeColoursInEveryLook, MaterialIsSolidWhereNothingMayShineThrough) {
    if (look.reduceTransparency || look.highContrast) {
        EXPECT_EQ(colours.material, colours.window);
        EXPECT_EQ(colours.bar, colours.window);
        EXPECT_EQ(colours.material.alpha(), 255);
    } else {
        EXPECT_GE(colours.material.alphaF(), 0.95F);
        EXPECT_LT(colours.material.alphaF(), 1.0F);
    }
    EXPECT_EQ(colours.window.alpha(), 255);
}

std::string testName(const testing::TestParamInfo<std::tuple<Look, const char*>>& info) {
    return std::string(std::get<0>(info.param).name) + "_" + (std::get<1>(info.param) + 1);
}

INSTANTIATE_TEST_SUITE_P(Looks, ThemeColoursInEveryLook,
                         testing::Combine(testing::ValuesIn(looks), testing::ValuesIn(accents)), testName);

TEST(ThemeColours, KeepTheAccentOfTheDesktopAsItIs) {
    Appearance appearance;
    appearance.accent = Colour{0.2, 0.4, 0.6};
    EXPECT_EQ(themeColours(appearance, Qt::red).accent.rgb(), qRgb(51, 102, 153));
    appearance.accent.reset();
    EXPECT_EQ(themeColours(appearance, Qt::red).accent, QColor(255, 0, 0));
}

TEST(ThemeColours, FixedColoursAreTheSameInEveryLook) {
    for (const Look& look : looks) {
        const ThemeColours colours =
            themeColours({look.dark, look.highContrast, false, look.reduceTransparency, {}}, Qt::blue);
        EXPECT_EQ(colours.doneGreen.rgb(), qRgb(79, 186, 128));
        EXPECT_EQ(colours.todayOrange.rgb(), qRgb(242, 163, 77));
        EXPECT_EQ(colours.overdueRed.rgb(), qRgb(232, 97, 89));
        EXPECT_EQ(colours.onDone.rgb(), qRgb(255, 255, 255));
    }
}

TEST(ThemeColours, FixedColoursKeepTheirHueAsText) {
    const ThemeColours light = themeColours({}, Qt::blue);
    EXPECT_NEAR(light.todayText.hslHue(), light.todayOrange.hslHue(), 3);
    EXPECT_LT(light.todayText.lightness(), light.todayOrange.lightness());
    EXPECT_NEAR(light.overdueText.hslHue(), light.overdueRed.hslHue(), 3);
    EXPECT_LT(light.overdueText.lightness(), light.overdueRed.lightness());

    const ThemeColours dark = themeColours({true, false, false, false, {}}, Qt::blue);
    EXPECT_EQ(dark.todayText.rgb(), dark.todayOrange.rgb());
}

TEST(Contrast, HasTheRatiosThatThePublishedFormulaGives) {
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 0.001);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::white), 1, 0.001);
    EXPECT_NEAR(contrastRatio(QColor("#767676"), Qt::white), 4.54, 0.01);
    EXPECT_NEAR(contrastRatio(QColor("#ff0000"), Qt::white), 4.00, 0.01);
}

TEST(Contrast, ReadableLeavesAColourThatReachesTheRatio) {
    const std::array backgrounds{QColor(Qt::white)};
    EXPECT_EQ(readable(QColor("#123456"), backgrounds, 4.5), QColor("#123456"));
    EXPECT_EQ(readable(Qt::white, backgrounds, 21), QColor(Qt::black));
}

} // namespace
} // namespace quillo

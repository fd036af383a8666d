#include "ui/theme/Theme.h"

#include "support/SettableAppearance.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlEngine>
#include <memory>

namespace quillo {
namespace {

class ThemeTest : public testing::Test {
protected:
    void TearDown() override {
        QGuiApplication::setPalette(palette);
        QGuiApplication::setFont(font);
        Theme::setInstance(nullptr);
    }

    const QPalette palette = QGuiApplication::palette();
    const QFont font = QGuiApplication::font();
    support::SettableAppearance settings;
};

TEST_F(ThemeTest, FollowsTheAppearance) {
    Theme theme(settings);
    int announced = 0;
    QObject::connect(&theme, &Theme::changed, &theme, [&] { ++announced; });
    const QColor light = theme.window();

    settings.value.set({true, false, true, true, Colour{1, 0, 0}});
    EXPECT_EQ(announced, 1);
    EXPECT_TRUE(theme.dark());
    EXPECT_TRUE(theme.reduceMotion());
    EXPECT_TRUE(theme.reduceTransparency());
    EXPECT_FALSE(theme.highContrast());
    EXPECT_LT(theme.window().lightness(), light.lightness());
    EXPECT_EQ(theme.accent().rgb(), qRgb(255, 0, 0));
}

TEST_F(ThemeTest, HighContrastIsSolid) {
    Theme theme(settings);
    settings.value.set({false, true, false, false, std::nullopt});
    EXPECT_TRUE(theme.reduceTransparency());
    EXPECT_EQ(theme.material(), theme.window());
}

TEST_F(ThemeTest, TakesTheAccentOfAPlatformThemeWhereTheDesktopNamesNone) {
    Theme theme(settings);
    QPalette purple = palette;
    purple.setColor(QPalette::Highlight, QColor(145, 65, 172));
    QGuiApplication::setPalette(purple);
    EXPECT_EQ(theme.accent().rgb(), qRgb(145, 65, 172));
    settings.value.set({false, false, false, false, Colour{0, 0, 1}});
    EXPECT_EQ(theme.accent().rgb(), qRgb(0, 0, 255));
}

TEST_F(ThemeTest, IsDarkWhereAPlatformThemeIs) {
    Theme theme(settings);
    EXPECT_FALSE(theme.dark());
    QPalette dark = palette;
    dark.setColor(QPalette::Window, QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, QColor(230, 230, 230));
    QGuiApplication::setPalette(dark);
    EXPECT_TRUE(theme.dark());
}

TEST_F(ThemeTest, SizesFollowTheFontWithinBounds) {
    Theme theme(settings);
    QFont other = font;
    other.setPixelSize(15);
    QGuiApplication::setFont(other);
    EXPECT_EQ(theme.fontSize(), 15);
    EXPECT_LT(theme.captionSize(), 15);
    EXPECT_GT(theme.titleSize(), 15);
    other.setPixelSize(1);
    QGuiApplication::setFont(other);
    EXPECT_EQ(theme.fontSize(), 10);
    other.setPixelSize(500);
    QGuiApplication::setFont(other);
    EXPECT_EQ(theme.fontSize(), 22);
}

TEST_F(ThemeTest, IsWhatQmlKnowsAsTheme) {
    Theme theme(settings);
    Theme::setInstance(&theme);
    settings.value.set({true, false, false, false, std::nullopt});
    {
        QQmlEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Quillo\n"
                          "QtObject { property bool dark: Theme.dark; property color back: Theme.window }",
                          QUrl());
        const std::unique_ptr<QObject> object(component.create());
        ASSERT_TRUE(object) << component.errorString().toStdString();
        EXPECT_TRUE(object->property("dark").toBool());
        settings.value.set({});
        EXPECT_FALSE(object->property("dark").toBool());
        EXPECT_EQ(object->property("back").value<QColor>(), theme.window());
    }
    EXPECT_FALSE(theme.dark()); // the engine did not take it along
}

} // namespace
} // namespace quillo

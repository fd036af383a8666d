#include "ui/placement/WindowPlacement.h"

#include <gtest/gtest.h>

#include <ostream>
#include <vector>

void PrintTo(const QPoint& point, std::ostream* out) {
    *out << point.x() << ", " << point.y();
}

namespace quillo {
namespace {

constexpr QSize popover(360, 480);
constexpr QPoint nowhere(-9999, -9999);

ScreenArea screen(const QRect& geometry, int left, int top, int right, int bottom, double scale = 1) {
    return {geometry, geometry.adjusted(left, top, -right, -bottom), scale};
}

const ScreenArea topPanel = screen({0, 0, 1280, 800}, 0, 28, 0, 0);
const ScreenArea bottomPanel = screen({0, 0, 1280, 800}, 0, 0, 0, 40);
const ScreenArea leftPanel = screen({0, 0, 1280, 800}, 48, 0, 0, 0);
const ScreenArea rightPanel = screen({0, 0, 1280, 800}, 0, 0, 48, 0);
const ScreenArea noPanel = screen({0, 0, 1280, 800}, 0, 0, 0, 0);
const ScreenArea second = screen({1280, 0, 1920, 1080}, 0, 30, 0, 0);
const ScreenArea above = screen({0, -1080, 1920, 1080}, 0, 0, 0, 36);

TEST(PopoverPosition, IsBesideThePanelOfItsIcon) {
    struct Case {
        const char* name;
        QPoint anchor;
        std::vector<ScreenArea> screens;
        QPoint corner;
    };
    const std::vector<Case> cases{
        {"under a panel at the top", {640, 14}, {topPanel}, {460, 32}},
        {"at its right end", {1270, 14}, {topPanel}, {916, 32}},
        {"at its left end", {3, 0}, {topPanel}, {4, 32}},
        {"over a panel at the bottom", {640, 780}, {bottomPanel}, {460, 276}},
        {"at its right end", {1279, 799}, {bottomPanel}, {916, 276}},
        {"beside a panel on the left", {20, 400}, {leftPanel}, {52, 160}},
        {"at its lower end", {20, 799}, {leftPanel}, {52, 316}},
        {"beside a panel on the right", {1260, 400}, {rightPanel}, {868, 160}},
        {"at its upper end", {1260, 2}, {rightPanel}, {868, 4}},
        {"under a panel that hides itself", {640, 10}, {noPanel}, {460, 24}},
        {"over one at the bottom", {640, 790}, {noPanel}, {460, 296}},
        {"beside one on the left", {5, 400}, {noPanel}, {19, 160}},
        {"beside one on the right", {1275, 400}, {noPanel}, {901, 160}},
        {"at the right end of one at the top of which nothing is known", {1275, 16}, {noPanel}, {916, 30}},
        {"at the right end of one at the bottom", {1275, 784}, {noPanel}, {916, 290}},
        {"on a second screen", {3000, 10}, {noPanel, second}, {2820, 34}},
        {"on one above", {100, -10}, {noPanel, above}, {4, -520}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(popoverPosition(each.anchor, nowhere, popover, each.screens), each.corner) << each.name;
}

TEST(PopoverPosition, IsTheMiddleWhereNothingIsKnownOfTheIcon) {
    EXPECT_EQ(popoverPosition(std::nullopt, nowhere, popover, {noPanel, second}), QPoint(460, 160));
    EXPECT_EQ(popoverPosition(std::nullopt, QPoint(2000, 500), popover, {noPanel, second}),
              QPoint(2060, 315));
}

TEST(PopoverPosition, IsTheMiddleWhereTheScreenOfTheIconIsGone) {
    EXPECT_EQ(popoverPosition(QPoint(3000, 10), QPoint(100, 100), popover, {noPanel}), QPoint(460, 160));
    EXPECT_EQ(popoverPosition(QPoint(-1, -1), nowhere, popover, {noPanel}), QPoint(460, 160));
}

TEST(PopoverPosition, StaysOnTheScreenOfItsIcon) {
    const std::vector<ScreenArea> screens{topPanel, second, above};
    for (int x = 0; x < 3200; x += 37) {
        for (int y = -1080; y < 1080; y += 41) {
            const ScreenArea* at = screenAt(screens, {x, y});
            if (at == nullptr)
                continue;
            const auto corner = popoverPosition(QPoint(x, y), nowhere, popover, screens);
            ASSERT_TRUE(corner);
            EXPECT_TRUE(at->available.contains(QRect(*corner, popover))) << x << ", " << y;
        }
    }
}

TEST(PopoverPosition, ShowsTheTopLeftOfWhatIsLargerThanTheScreen) {
    const ScreenArea small = screen({0, 0, 320, 240}, 0, 20, 0, 0);
    EXPECT_EQ(popoverPosition(QPoint(300, 10), nowhere, popover, {small}), QPoint(4, 24));
    EXPECT_EQ(popoverPosition(std::nullopt, nowhere, popover, {small}), QPoint(4, 24));
}

TEST(PopoverPosition, IsNoneWithoutAScreen) {
    EXPECT_EQ(popoverPosition(QPoint(1, 1), QPoint(1, 1), popover, {}), std::nullopt);
    EXPECT_EQ(popoverPosition(std::nullopt, QPoint(1, 1), popover, {}), std::nullopt);
}

TEST(FromDevicePixels, UndoesTheScaleOfTheScreen) {
    const ScreenArea plain = screen({0, 0, 1280, 800}, 0, 0, 0, 0);
    // Qt leaves a screen's corner where it is and divides only its size: 3840x2160 at 1280.
    const ScreenArea dense = screen({1280, 0, 1920, 1080}, 0, 0, 0, 0, 2);
    const ScreenArea fractional = screen({0, 800, 853, 533}, 0, 0, 0, 0, 1.5);
    const std::vector<ScreenArea> screens{plain, dense, fractional};
    EXPECT_EQ(fromDevicePixels({100, 700}, screens), QPoint(100, 700));
    EXPECT_EQ(fromDevicePixels({1280, 0}, screens), QPoint(1280, 0));
    EXPECT_EQ(fromDevicePixels({1280 + 3839, 2159}, screens), QPoint(1280 + 1919, 1079));
    EXPECT_EQ(fromDevicePixels({15, 815}, screens), QPoint(10, 810));
    EXPECT_EQ(fromDevicePixels({-1, 0}, screens), std::nullopt);
    EXPECT_EQ(fromDevicePixels({1280, 2160}, screens), std::nullopt);
    EXPECT_EQ(fromDevicePixels({0, 0}, {}), std::nullopt);
}

TEST(QuickAddPosition, IsAboveTheMiddleOfTheVisiblePart) {
    constexpr QSize panel(600, 72);
    EXPECT_EQ(quickAddPosition({5, 5}, panel, {noPanel}), QPoint(340, 284));
    EXPECT_EQ(quickAddPosition({5, 5}, panel, {topPanel}), QPoint(340, 298));
    EXPECT_EQ(quickAddPosition({5, 5}, panel, {leftPanel}), QPoint(364, 284));
    EXPECT_EQ(quickAddPosition({2000, 5}, panel, {noPanel, second}), QPoint(1940, 439));
    EXPECT_EQ(quickAddPosition(nowhere, panel, {noPanel, second}), QPoint(340, 284));
    EXPECT_EQ(quickAddPosition({5, 5}, panel, {}), std::nullopt);
}

TEST(QuickAddPosition, StaysOnASmallScreen) {
    const ScreenArea small = screen({0, 0, 500, 180}, 0, 20, 0, 0);
    EXPECT_EQ(quickAddPosition({5, 5}, {600, 72}, {small}), QPoint(0, 20));
}

} // namespace
} // namespace quillo

#include "linux/hotkey/KeyPositions.h"

#include "linux/hotkey/PortalTrigger.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quillo {
namespace {

TEST(KeyPositions, AreThoseOfAnAnsiKeyboard) {
    // Row by row and from left to right, the kernel numbers the keys one after another.
    struct Row {
        int firstEvdevCode;
        std::vector<std::uint32_t> keyCodes;
        std::vector<std::string_view> names;
    };
    const std::vector<Row> rows = {
        {2,
         {18, 19, 20, 21, 23, 22, 26, 28, 25, 29, 27, 24, 51, 48},
         {"1", "2", "3", "4", "5", "6", "7", "8", "9", "0", "minus", "equal", "BackSpace", "Tab"}},
        {16,
         {12, 13, 14, 15, 17, 16, 32, 34, 31, 35, 33, 30, 36},
         {"q", "w", "e", "r", "t", "y", "u", "i", "o", "p", "bracketleft", "bracketright", "Return"}},
        {30,
         {0, 1, 2, 3, 5, 4, 38, 40, 37, 41, 39, 50},
         {"a", "s", "d", "f", "g", "h", "j", "k", "l", "semicolon", "apostrophe", "grave"}},
        {43,
         {42, 6, 7, 8, 9, 11, 45, 46, 43, 47, 44},
         {"backslash", "z", "x", "c", "v", "b", "n", "m", "comma", "period", "slash"}},
        {57, {49}, {"space"}},
        {59,
         {122, 120, 99, 118, 96, 97, 98, 100, 101, 109},
         {"F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10"}},
        {87, {103, 111}, {"F11", "F12"}},
        {183, {105, 107, 113, 106, 64, 79, 80, 90}, {"F13", "F14", "F15", "F16", "F17", "F18", "F19", "F20"}},
        {71,
         {89, 91, 92, 78, 86, 87, 88, 69, 83, 84, 85, 82, 65},
         {"KP_7", "KP_8", "KP_9", "KP_Subtract", "KP_4", "KP_5", "KP_6", "KP_Add", "KP_1", "KP_2", "KP_3",
          "KP_0", "KP_Decimal"}},
        {102,
         {115, 126, 116, 123, 124, 119, 125, 121, 114, 117},
         {"Home", "Up", "Prior", "Left", "Right", "End", "Down", "Next", "Insert", "Delete"}},
        {1, {53}, {"Escape"}},
        {86, {10}, {"less"}},
    };
    for (const Row& row : rows) {
        int evdevCode = row.firstEvdevCode;
        ASSERT_EQ(row.keyCodes.size(), row.names.size());
        for (std::size_t index = 0; index < row.keyCodes.size(); ++index) {
            const auto position = keyPosition(row.keyCodes[index]);
            ASSERT_TRUE(position) << row.keyCodes[index];
            EXPECT_EQ(position->keysymName, row.names[index]) << row.keyCodes[index];
            EXPECT_EQ(position->evdevCode, evdevCode++) << row.keyCodes[index];
        }
    }
}

TEST(KeyPositions, AreOneAKeyAndAKeyEach) {
    std::set<int> evdevCodes;
    std::set<std::string_view> names;
    std::size_t count = 0;
    for (std::uint32_t keyCode = 0; keyCode < 1000; ++keyCode) {
        if (const auto position = keyPosition(keyCode)) {
            ++count;
            evdevCodes.insert(position->evdevCode);
            names.insert(position->keysymName);
            EXPECT_LE(position->evdevCode, 255 - 8) << "the X server has no keycode for it";
        }
    }
    EXPECT_EQ(evdevCodes.size(), count);
    EXPECT_EQ(names.size(), count);
}

TEST(KeyPositions, HaveNoneForModifiersAndUnknownNumbers) {
    for (const std::uint32_t keyCode : {54U, 55U, 56U, 57U, 58U, 59U, 60U, 61U, 62U, 63U, 52U, 127U, 128U,
                                        1000U, std::numeric_limits<std::uint32_t>::max()})
        EXPECT_FALSE(keyPosition(keyCode)) << keyCode;
}

TEST(KeyPositions, AreFoundByTheNumberThatKeyboardEventsHave) {
    // Those of the X server: the kernel's and 8.
    EXPECT_EQ(keyCodeAt(45), 40U); // K
    EXPECT_EQ(keyCodeAt(9), 53U);  // Escape
    for (std::uint32_t keyCode = 0; keyCode < 1000; ++keyCode) {
        if (const auto position = keyPosition(keyCode)) {
            EXPECT_EQ(keyCodeAt(position->evdevCode + firstScanCode), keyCode);
        }
    }
    // Nothing; no key; the left Super key; more than there are.
    for (const std::uint32_t scanCode : {0U, 8U, 133U, 300U, std::numeric_limits<std::uint32_t>::max()})
        EXPECT_FALSE(keyCodeAt(scanCode)) << scanCode;
}

TEST(PortalTrigger, IsModifiersAndTheNameOfTheKey) {
    EXPECT_EQ(portalTrigger({}), "CTRL+ALT+LOGO+t");
    EXPECT_EQ(portalTrigger({36, 0x300}), "SHIFT+LOGO+Return");
    EXPECT_EQ(portalTrigger({49, 0xFFFFFFFF}), "CTRL+ALT+SHIFT+LOGO+space");
}

TEST(PortalTrigger, IsAbsentWithoutAModifierOrAKey) {
    EXPECT_FALSE(portalTrigger({17, 0}));
    EXPECT_FALSE(portalTrigger({17, 0x1}));
    EXPECT_FALSE(portalTrigger({58, 0x100}));
    EXPECT_FALSE(portalTrigger({4000, 0x100}));
}

} // namespace
} // namespace quillo

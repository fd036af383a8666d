#include "hotkey/DisplayString.h"

#include "hotkey/ModifierMask.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <string>

namespace quillo {
namespace {

const std::map<std::uint32_t, std::string> names = {
    {0, "A"},    {1, "S"},     {2, "D"},     {3, "F"},     {4, "H"},    {5, "G"},    {6, "Z"},
    {7, "X"},    {8, "C"},     {9, "V"},     {11, "B"},    {12, "Q"},   {13, "W"},   {14, "E"},
    {15, "R"},   {16, "Y"},    {17, "T"},    {18, "1"},    {19, "2"},   {20, "3"},   {21, "4"},
    {22, "6"},   {23, "5"},    {24, "="},    {25, "9"},    {26, "7"},   {27, "-"},   {28, "8"},
    {29, "0"},   {30, "]"},    {31, "O"},    {32, "U"},    {33, "["},   {34, "I"},   {35, "P"},
    {36, "↩"},   {37, "L"},    {38, "J"},    {39, "'"},    {40, "K"},   {41, ";"},   {42, "\\"},
    {43, ","},   {44, "/"},    {45, "N"},    {46, "M"},    {47, "."},   {48, "⇥"},   {49, "Space"},
    {50, "`"},   {53, "⎋"},    {96, "F5"},   {97, "F6"},   {98, "F7"},  {99, "F3"},  {100, "F8"},
    {101, "F9"}, {103, "F11"}, {109, "F10"}, {111, "F12"}, {118, "F4"}, {120, "F2"}, {122, "F1"},
    {123, "←"},  {124, "→"},   {125, "↓"},   {126, "↑"},
};

TEST(DisplayString, NamesEveryKeyThatHasAName) {
    for (std::uint32_t code = 0; code < 300; ++code) {
        const auto name = names.find(code);
        EXPECT_EQ(displayString({code, 0}),
                  name != names.end() ? name->second : "Key " + std::to_string(code));
    }
    EXPECT_EQ(displayString({std::numeric_limits<std::uint32_t>::max(), 0}), "Key 4294967295");
}

TEST(DisplayString, ShowsTheModifiersInAFixedOrder) {
    using namespace hot_key_modifiers;
    EXPECT_EQ(displayString({}), "⌃⌥⌘T");
    EXPECT_EQ(displayString({36, command | shift}), "⇧⌘↩");
    EXPECT_EQ(displayString({40, 0x300}), "⇧⌘K");
    EXPECT_EQ(displayString({0, command}), "⌘A");
    EXPECT_EQ(displayString({0, shift}), "⇧A");
    EXPECT_EQ(displayString({0, option}), "⌥A");
    EXPECT_EQ(displayString({0, control}), "⌃A");
    EXPECT_EQ(displayString({10, 0xFFFFFFFF}), "⌃⌥⇧⌘Key 10");
    EXPECT_EQ(displayString({10, ~(command | shift | option | control)}), "Key 10");
}

TEST(ModifierMask, TakesTheFourModifiersAndDropsTheRest) {
    EXPECT_EQ(modifierMask(0), 0U);
    EXPECT_EQ(modifierMask(0x40000), 0x1000U);
    EXPECT_EQ(modifierMask(0x80000), 0x800U);
    EXPECT_EQ(modifierMask(0x20000), 0x200U);
    EXPECT_EQ(modifierMask(0x100000), 0x100U);
    EXPECT_EQ(modifierMask(0x1C0000), 0x1900U);
    EXPECT_EQ(modifierMask(0xFFFFFFFF), 0x1B00U);
    EXPECT_EQ(modifierMask(~0x1E0000U), 0U);
}

} // namespace
} // namespace quillo

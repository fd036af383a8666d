#include "linux/hotkey/KeyPositions.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <iterator>

namespace quillo {

namespace {

struct Key {
    std::uint32_t keyCode;
    KeyPosition position;
};

/// In the order of the codes. Both kinds of code number the usages of USB keyboards (HID Usage Tables, page
/// 7), by which one was found for the other.
constexpr Key keys[] = {
    {0, {KEY_A, "a"}},
    {1, {KEY_S, "s"}},
    {2, {KEY_D, "d"}},
    {3, {KEY_F, "f"}},
    {4, {KEY_H, "h"}},
    {5, {KEY_G, "g"}},
    {6, {KEY_Z, "z"}},
    {7, {KEY_X, "x"}},
    {8, {KEY_C, "c"}},
    {9, {KEY_V, "v"}},
    {10, {KEY_102ND, "less"}},
    {11, {KEY_B, "b"}},
    {12, {KEY_Q, "q"}},
    {13, {KEY_W, "w"}},
    {14, {KEY_E, "e"}},
    {15, {KEY_R, "r"}},
    {16, {KEY_Y, "y"}},
    {17, {KEY_T, "t"}},
    {18, {KEY_1, "1"}},
    {19, {KEY_2, "2"}},
    {20, {KEY_3, "3"}},
    {21, {KEY_4, "4"}},
    {22, {KEY_6, "6"}},
    {23, {KEY_5, "5"}},
    {24, {KEY_EQUAL, "equal"}},
    {25, {KEY_9, "9"}},
    {26, {KEY_7, "7"}},
    {27, {KEY_MINUS, "minus"}},
    {28, {KEY_8, "8"}},
    {29, {KEY_0, "0"}},
    {30, {KEY_RIGHTBRACE, "bracketright"}},
    {31, {KEY_O, "o"}},
    {32, {KEY_U, "u"}},
    {33, {KEY_LEFTBRACE, "bracketleft"}},
    {34, {KEY_I, "i"}},
    {35, {KEY_P, "p"}},
    {36, {KEY_ENTER, "Return"}},
    {37, {KEY_L, "l"}},
    {38, {KEY_J, "j"}},
    {39, {KEY_APOSTROPHE, "apostrophe"}},
    {40, {KEY_K, "k"}},
    {41, {KEY_SEMICOLON, "semicolon"}},
    {42, {KEY_BACKSLASH, "backslash"}},
    {43, {KEY_COMMA, "comma"}},
    {44, {KEY_SLASH, "slash"}},
    {45, {KEY_N, "n"}},
    {46, {KEY_M, "m"}},
    {47, {KEY_DOT, "period"}},
    {48, {KEY_TAB, "Tab"}},
    {49, {KEY_SPACE, "space"}},
    {50, {KEY_GRAVE, "grave"}},
    {51, {KEY_BACKSPACE, "BackSpace"}},
    {53, {KEY_ESC, "Escape"}},
    {64, {KEY_F17, "F17"}},
    {65, {KEY_KPDOT, "KP_Decimal"}},
    {67, {KEY_KPASTERISK, "KP_Multiply"}},
    {69, {KEY_KPPLUS, "KP_Add"}},
    {75, {KEY_KPSLASH, "KP_Divide"}},
    {76, {KEY_KPENTER, "KP_Enter"}},
    {78, {KEY_KPMINUS, "KP_Subtract"}},
    {79, {KEY_F18, "F18"}},
    {80, {KEY_F19, "F19"}},
    {81, {KEY_KPEQUAL, "KP_Equal"}},
    {82, {KEY_KP0, "KP_0"}},
    {83, {KEY_KP1, "KP_1"}},
    {84, {KEY_KP2, "KP_2"}},
    {85, {KEY_KP3, "KP_3"}},
    {86, {KEY_KP4, "KP_4"}},
    {87, {KEY_KP5, "KP_5"}},
    {88, {KEY_KP6, "KP_6"}},
    {89, {KEY_KP7, "KP_7"}},
    {90, {KEY_F20, "F20"}},
    {91, {KEY_KP8, "KP_8"}},
    {92, {KEY_KP9, "KP_9"}},
    {93, {KEY_YEN, "yen"}},
    {94, {KEY_RO, "underscore"}},
    {95, {KEY_KPCOMMA, "KP_Separator"}},
    {96, {KEY_F5, "F5"}},
    {97, {KEY_F6, "F6"}},
    {98, {KEY_F7, "F7"}},
    {99, {KEY_F3, "F3"}},
    {100, {KEY_F8, "F8"}},
    {101, {KEY_F9, "F9"}},
    {103, {KEY_F11, "F11"}},
    {105, {KEY_F13, "F13"}},
    {106, {KEY_F16, "F16"}},
    {107, {KEY_F14, "F14"}},
    {109, {KEY_F10, "F10"}},
    {110, {KEY_COMPOSE, "Menu"}},
    {111, {KEY_F12, "F12"}},
    {113, {KEY_F15, "F15"}},
    {114, {KEY_INSERT, "Insert"}},
    {115, {KEY_HOME, "Home"}},
    {116, {KEY_PAGEUP, "Prior"}},
    {117, {KEY_DELETE, "Delete"}},
    {118, {KEY_F4, "F4"}},
    {119, {KEY_END, "End"}},
    {120, {KEY_F2, "F2"}},
    {121, {KEY_PAGEDOWN, "Next"}},
    {122, {KEY_F1, "F1"}},
    {123, {KEY_LEFT, "Left"}},
    {124, {KEY_RIGHT, "Right"}},
    {125, {KEY_DOWN, "Down"}},
    {126, {KEY_UP, "Up"}},
};

} // namespace

std::optional<KeyPosition> keyPosition(std::uint32_t keyCode) {
    const auto* const found =
        std::lower_bound(std::begin(keys), std::end(keys), keyCode,
                         [](const Key& key, std::uint32_t code) { return key.keyCode < code; });
    if (found == std::end(keys) || found->keyCode != keyCode)
        return std::nullopt;
    return found->position;
}

std::optional<std::uint32_t> keyCodeAt(std::uint32_t scanCode) {
    const auto* const found = std::find_if(std::begin(keys), std::end(keys), [scanCode](const Key& key) {
        return key.position.evdevCode + firstScanCode == scanCode;
    });
    return found != std::end(keys) ? std::optional(found->keyCode) : std::nullopt;
}

} // namespace quillo

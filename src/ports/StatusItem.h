/// The program's place in the desktop's status bar.
#pragma once

#include "base/Signal.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillo {

/// How the item looks and what it says of itself. Texts are UTF-8 and translated.
struct StatusItemFace {
    std::string symbol;             ///< name of an image, drawn in the bar's own colour
    std::string symbolDescription;  ///< what the image tells, for those who cannot see it
    std::string toolTip;            ///< what the item is
    std::string accessibilityLabel; ///< its name
    std::string accessibilityHelp;  ///< what a click does
};

/// A place on the screens together, in pixels as the windowing system counts them.
struct ScreenPoint {
    int x = 0;
    int y = 0;

    friend bool operator==(const ScreenPoint&, const ScreenPoint&) = default;
};

/// A button of the pointer was let go over the item.
struct StatusItemClick {
    enum class Button { left, right };
    Button button = Button::left;
    bool controlHeld = false;         ///< false also where that cannot be known
    std::optional<ScreenPoint> place; ///< of the pointer; absent where the bar does not tell
    std::string activationToken;      ///< with which a window may take the focus; may be empty
};

/// A line of a menu.
struct MenuItem {
    enum class Kind { action, separator };
    Kind kind = Kind::separator;
    std::string title;            ///< UTF-8, translated; for people as it stands, without mnemonic
    std::string shortcut;         ///< such as "Ctrl+N"; may be empty
    std::function<void()> action; ///< without one the line cannot be chosen

    static MenuItem separator() { return {}; }
    static MenuItem of(std::string title, std::string shortcut, std::function<void()> action) {
        return {Kind::action, std::move(title), std::move(shortcut), std::move(action)};
    }
};

/// Belongs to the main thread. Where there is no status bar it shows nothing and says so in the log.
class StatusItem {
public:
    using MenuMaker = std::function<std::vector<MenuItem>()>;

    virtual ~StatusItem() = default;

    virtual void setFace(const StatusItemFace& face) = 0;

    /// The text beside the symbol, as it stands: a blank and a number, or nothing. A bar that shows no text
    /// gets it as a badge; either way it also becomes the second line of the tool tip.
    virtual void setTitle(std::string_view title) = 0;

    /// The menu that bars show by themselves, asked for each time it is about to be shown.
    virtual void setMenu(MenuMaker maker) = 0;

    /// Shows a menu at the item, or at `place`.
    virtual void showMenu(const std::vector<MenuItem>& menu, const std::optional<ScreenPoint>& place) = 0;

    Signal<const StatusItemClick&> clicked;
};

} // namespace quillo

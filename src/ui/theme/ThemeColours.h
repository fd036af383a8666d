/// Which colours the program is painted in.
#pragma once

#include "ports/AppearanceSettings.h"

#include <QColor>
#include <vector>

namespace quillo {

/// Text colours reach a contrast of 4.5:1 on whatever they may stand on, 7:1 in high contrast.
struct ThemeColours {
    QColor window; ///< opaque
    QColor
        material; ///< background of popover and panel: lets a hint of what is behind through, or is `window`
    QColor bar;   ///< strip on material, or `window`
    QColor field; ///< behind what is typed
    QColor hover; ///< laid over a background
    QColor pressed; ///< laid over a background
    QColor separator;
    QColor stroke;    ///< along the inner edge of a floating window
    QColor focusRing; ///< at least 3:1

    QColor text;
    QColor secondary;
    QColor faint;     ///< for symbols and outlines: secondary at 0.6, or as it is in high contrast
    QColor faintText; ///< faint as text
    QColor placeholder;

    QColor accent;       ///< as the desktop has it
    QColor accentText;   ///< text on accent
    QColor accentSymbol; ///< symbols on accent: white wherever white can be seen there (3:1)
    QColor accentLabel;  ///< accent as text on a background

    QColor doneGreen;
    QColor onDone;
    QColor todayOrange;
    QColor todayText; ///< todayOrange as text
    QColor overdueRed;
    QColor overdueText; ///< overdueRed as text

    friend bool operator==(const ThemeColours&, const ThemeColours&) = default;
};

/// `accent` is used where the desktop names none.
ThemeColours themeColours(const Appearance& appearance, const QColor& accent);

/// Every opaque colour that text may come to stand on, whatever lies behind the window.
std::vector<QColor> textBackgrounds(const ThemeColours& colours);

} // namespace quillo

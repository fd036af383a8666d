/// Where windows go on the screens.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>
#include <vector>

namespace quillo {

/// A screen, in Qt's coordinates: device-independent pixels, counted from the screen's top left corner, which
/// alone is where the windowing system has it.
struct ScreenArea {
    QRect geometry;
    QRect available;  ///< without panels and docks
    double scale = 1; ///< device pixels to one of Qt's
};

/// The screens there are, the primary one first. Needs a QGuiApplication.
std::vector<ScreenArea> currentScreens();

/// The screen that `place` is on, or null.
const ScreenArea* screenAt(const std::vector<ScreenArea>& screens, const QPoint& place);

/// A place in the windowing system's pixels, in Qt's; absent where there is no screen.
std::optional<QPoint> fromDevicePixels(const QPoint& place, const std::vector<ScreenArea>& screens);

/// The top left corner of a popover that belongs to `anchor`, a place within its icon: beside the panel that
/// the icon is on, centred at the anchor as far as the screen allows. Without an anchor, or with one that is
/// on no screen (any more), in the middle of the screen that `pointer` is on, else of the first. Absent where
/// there is no screen.
std::optional<QPoint> popoverPosition(const std::optional<QPoint>& anchor, const QPoint& pointer,
                                      const QSize& size, const std::vector<ScreenArea>& screens);

/// The top left corner of the quick-add panel on the screen that `pointer` is on, else the first: centred,
/// its middle 80 above that of the screen's visible part. Absent where there is no screen.
std::optional<QPoint> quickAddPosition(const QPoint& pointer, const QSize& size,
                                       const std::vector<ScreenArea>& screens);

} // namespace quillo

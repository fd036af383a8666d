#include "ui/placement/WindowPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <array>
#include <cmath>

namespace quillo {

namespace {

/// Between a popover and the panel it belongs to, and between a popover and the edges of the screen.
constexpr int gap = 4;

/// Half the height of an icon, for panels that keep no room for themselves: windows lie beneath them, and
/// only the anchor tells where the icon is.
constexpr int halfIcon = 14;

/// So near to the upper or lower edge are the anchors on panels that lie along it.
constexpr int nearEdge = 32;

constexpr int quickAddRise = 80;

/// So that all of it can be seen, or at least its top left.
QPoint within(const QRect& area, QPoint corner, const QSize& size, int margin) {
    const auto fit = [margin](int wanted, int from, int length, int needed) {
        const int last = std::max(from + margin, from + length - margin - needed);
        return std::clamp(wanted, from + margin, last);
    };
    return {fit(corner.x(), area.x(), area.width(), size.width()),
            fit(corner.y(), area.y(), area.height(), size.height())};
}

QPoint centred(const QRect& area, const QSize& size) {
    return {area.x() + (area.width() - size.width()) / 2, area.y() + (area.height() - size.height()) / 2};
}

const ScreenArea* screenAtOrFirst(const std::vector<ScreenArea>& screens, const QPoint& place) {
    const ScreenArea* screen = screenAt(screens, place);
    return screen != nullptr || screens.empty() ? screen : &screens.front();
}

enum class Edge { top, bottom, left, right };

/// That of the panel which the anchor is on: the one whose room it lies in. Where no room is known to be
/// kept, as under X11 with several screens, it is the upper or lower one, along which most panels lie and at
/// whose ends their icons are; else the nearest.
Edge edgeOf(const ScreenArea& screen, const QPoint& anchor) {
    const QRect& free = screen.available;
    if (anchor.y() < free.top())
        return Edge::top;
    if (anchor.y() > free.bottom())
        return Edge::bottom;
    if (anchor.x() < free.left())
        return Edge::left;
    if (anchor.x() > free.right())
        return Edge::right;
    const QRect& all = screen.geometry;
    if (anchor.y() - all.top() <= nearEdge)
        return Edge::top;
    if (all.bottom() - anchor.y() <= nearEdge)
        return Edge::bottom;
    struct Distance {
        int length;
        Edge edge;
    };
    const std::array distances{
        Distance{anchor.y() - all.top(), Edge::top}, Distance{all.bottom() - anchor.y(), Edge::bottom},
        Distance{anchor.x() - all.left(), Edge::left}, Distance{all.right() - anchor.x(), Edge::right}};
    return std::min_element(
               distances.begin(), distances.end(),
               [](const Distance& one, const Distance& other) { return one.length < other.length; })
        ->edge;
}

} // namespace

std::vector<ScreenArea> currentScreens() {
    std::vector<ScreenArea> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.push_back({screen->geometry(), screen->availableGeometry(), screen->devicePixelRatio()});
    return screens;
}

const ScreenArea* screenAt(const std::vector<ScreenArea>& screens, const QPoint& place) {
    const auto found = std::find_if(screens.begin(), screens.end(), [&](const ScreenArea& screen) {
        return screen.geometry.contains(place);
    });
    return found != screens.end() ? &*found : nullptr;
}

std::optional<QPoint> fromDevicePixels(const QPoint& place, const std::vector<ScreenArea>& screens) {
    for (const ScreenArea& screen : screens) {
        const QPoint offset = place - screen.geometry.topLeft();
        const QPoint scaled(static_cast<int>(std::floor(offset.x() / screen.scale)),
                            static_cast<int>(std::floor(offset.y() / screen.scale)));
        const QPoint inside = screen.geometry.topLeft() + scaled;
        if (screen.geometry.contains(inside))
            return inside;
    }
    return std::nullopt;
}

std::optional<QPoint> popoverPosition(const std::optional<QPoint>& anchor, const QPoint& pointer,
                                      const QSize& size, const std::vector<ScreenArea>& screens) {
    const ScreenArea* screen = anchor ? screenAt(screens, *anchor) : nullptr;
    if (screen == nullptr) {
        screen = screenAtOrFirst(screens, pointer);
        if (screen == nullptr)
            return std::nullopt;
        return within(screen->available, centred(screen->available, size), size, gap);
    }
    const QRect& free = screen->available;
    const QPoint middle(anchor->x() - size.width() / 2, anchor->y() - size.height() / 2);
    QPoint corner;
    switch (edgeOf(*screen, *anchor)) {
    case Edge::top:
        corner = {middle.x(), free.contains(*anchor) ? anchor->y() + halfIcon : free.top()};
        break;
    case Edge::bottom:
        corner = {middle.x(),
                  (free.contains(*anchor) ? anchor->y() - halfIcon : free.bottom() + 1) - size.height()};
        break;
    case Edge::left:
        corner = {free.contains(*anchor) ? anchor->x() + halfIcon : free.left(), middle.y()};
        break;
    case Edge::right:
        corner = {(free.contains(*anchor) ? anchor->x() - halfIcon : free.right() + 1) - size.width(),
                  middle.y()};
        break;
    }
    return within(free, corner, size, gap);
}

std::optional<QPoint> quickAddPosition(const QPoint& pointer, const QSize& size,
                                       const std::vector<ScreenArea>& screens) {
    const ScreenArea* screen = screenAtOrFirst(screens, pointer);
    if (screen == nullptr)
        return std::nullopt;
    const QPoint corner = centred(screen->available, size) - QPoint(0, quickAddRise);
    return within(screen->available, corner, size, 0);
}

} // namespace quillo

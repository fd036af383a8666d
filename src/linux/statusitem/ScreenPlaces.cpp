#include "linux/statusitem/ScreenPlaces.h"

#include <QCursor>
#include <QGuiApplication>
#include <QRect>
#include <QScreen>

namespace quillo {

namespace {

/// Qt scales a screen around its upper left corner, which keeps its place.
QRect pixelsOf(const QScreen& screen) {
    const QRect area = screen.geometry();
    return {area.topLeft(), area.size() * screen.devicePixelRatio()};
}

const QScreen* screenWith(const QPoint& pixel) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (pixelsOf(*screen).contains(pixel))
            return screen;
    }
    return nullptr;
}

} // namespace

std::optional<ScreenPoint> placeFromBar(int x, int y) {
    if ((x == 0 && y == 0) || !screenWith({x, y}))
        return std::nullopt;
    return ScreenPoint{x, y};
}

ScreenPoint pointerPlace() {
    const QPoint place = QCursor::pos();
    QPoint pixel = place;
    if (const QScreen* screen = QGuiApplication::screenAt(place)) {
        const QPoint corner = screen->geometry().topLeft();
        pixel = corner + (place - corner) * screen->devicePixelRatio();
    }
    return {pixel.x(), pixel.y()};
}

QPoint toQtCoordinates(const ScreenPoint& place) {
    const QPoint pixel(place.x, place.y);
    const QScreen* screen = screenWith(pixel);
    if (!screen)
        return pixel;
    const QPoint corner = screen->geometry().topLeft();
    return corner + (pixel - corner) / screen->devicePixelRatio();
}

} // namespace quillo

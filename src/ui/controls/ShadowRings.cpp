#include "ui/controls/ShadowRings.h"

#include <QColor>
#include <QPainter>
#include <QPen>
#include <cmath>

namespace quillo {

ShadowRings::ShadowRings(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &ShadowRings::changed, this, [this] { update(); });
}

void ShadowRings::paint(QPainter* painter) {
    constexpr double fading = 2.4;
    for (int ring = 0; ring < reach_; ++ring) {
        const double nearness = 1 - static_cast<double>(ring) / reach_;
        QColor color(Qt::black);
        color.setAlphaF(static_cast<float>(strength_ * std::pow(nearness, fading)));
        painter->setPen(QPen(color, 1));
        // A line is drawn around its middle.
        const double inset = reach_ - ring - 0.5;
        const double radius = cornerRadius_ + ring + 0.5;
        painter->drawRoundedRect(boundingRect().adjusted(inset, inset, -inset, -inset), radius, radius);
    }
}

} // namespace quillo

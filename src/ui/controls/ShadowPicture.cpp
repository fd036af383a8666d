#include "ui/controls/ShadowPicture.h"

#include <QImage>
#include <QPaintDevice>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace quillo {

namespace {

/// In the screen's pixels.
struct Shadow {
    double width = 0; ///< of all
    double height = 0;
    double radius = 0;
    double reach = 0;
    double strength = 0;

    /// How far the middle of that pixel is from what throws the shadow; below zero within it.
    double distance(int x, int y) const {
        const double across = std::max(std::abs(x + 0.5 - width / 2) - (width / 2 - reach - radius), 0.0);
        const double down = std::max(std::abs(y + 0.5 - height / 2) - (height / 2 - reach - radius), 0.0);
        return (across > 0 && down > 0 ? std::hypot(across, down) : std::max(across, down)) - radius;
    }

    QRgb color(int x, int y) const {
        constexpr double fading = 2.4;
        const double away = distance(x, y);
        if (away >= reach || away <= -0.5)
            return 0;
        const double nearness = 1 - std::max(away, 0.0) / reach;
        const double covered = std::min(away + 0.5, 1.0); // by a pixel at the edge
        return qRgba(0, 0, 0,
                     static_cast<int>(std::lround(255 * strength * covered * std::pow(nearness, fading))));
    }
};

} // namespace

ShadowPicture::ShadowPicture(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &ShadowPicture::changed, this, [this] { update(); });
}

void ShadowPicture::paint(QPainter* painter) {
    const double scale = painter->device()->devicePixelRatioF();
    const QSize size = (boundingRect().size() * scale).toSize();
    if (size.isEmpty() || reach_ <= 0)
        return;
    const Shadow shadow{static_cast<double>(size.width()), static_cast<double>(size.height()),
                        cornerRadius_ * scale, reach_ * scale, strength_};
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    // One quarter is worked out. Where both sides are straight, each line and each column is like the next.
    const int corner = static_cast<int>(std::ceil(shadow.reach + shadow.radius));
    const int across = std::min((size.width() + 1) / 2, corner + 1);
    const int down = std::min((size.height() + 1) / 2, corner + 1);
    const auto line = [&](int y) { return reinterpret_cast<QRgb*>(picture.scanLine(y)); };
    for (int y = 0; y < down; ++y) {
        QRgb* const top = line(y);
        for (int x = 0; x < across; ++x)
            top[x] = top[size.width() - 1 - x] = shadow.color(x, y);
        std::fill(top + across, top + size.width() - across, top[across - 1]);
        std::copy_n(top, size.width(), line(size.height() - 1 - y));
    }
    for (int y = down; y < size.height() - down; ++y)
        std::copy_n(line(down - 1), size.width(), line(y));
    picture.setDevicePixelRatio(scale);
    painter->drawImage(0, 0, picture);
}

} // namespace quillo

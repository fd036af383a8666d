#include "ui/controls/ShadowPicture.h"

#include <QImage>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGNode>
#include <QSGTexture>
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

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

/// The four corners of a shadow, with one line and one column between them, where its sides are straight.
struct Corners {
    Shadow shadow;
    int width;  ///< of one
    int height; ///< of one

    explicit Corners(const Shadow& shadow)
        : shadow(shadow), width(extent(shadow.width)), height(extent(shadow.height)) {}

    int extent(double all) const {
        return std::min(static_cast<int>(all) / 2, static_cast<int>(std::ceil(shadow.reach + shadow.radius)));
    }

    QImage picture() const {
        QImage picture(2 * width + 1, 2 * height + 1, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < picture.height(); ++y) {
            auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y));
            for (int x = 0; x < picture.width(); ++x)
                line[x] = shadow.color(std::min(x, 2 * width - x), std::min(y, 2 * height - y));
        }
        return picture;
    }
};

/// What is drawn: pieces of one picture, which goes with them.
struct ShadowNode : QSGNode {
    std::unique_ptr<QSGTexture> texture;
};

} // namespace

ShadowPicture::ShadowPicture(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &ShadowPicture::changed, this, [this] { update(); });
}

QSGNode* ShadowPicture::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
    delete node;
    const double scale = window()->effectiveDevicePixelRatio();
    const QSize size = (boundingRect().size() * scale).toSize();
    if (size.isEmpty() || reach_ <= 0)
        return nullptr;
    const Corners corners(Shadow{static_cast<double>(size.width()), static_cast<double>(size.height()),
                                 cornerRadius_ * scale, reach_ * scale, strength_});
    auto shadow = std::make_unique<ShadowNode>();
    shadow->texture.reset(
        window()->createTextureFromImage(corners.picture(), QQuickWindow::TextureHasAlphaChannel));
    // Where the pieces begin and end, in the picture and on the screen.
    const auto inPicture = [](int corner) { return std::array{0, corner, corner + 1, 2 * corner + 1}; };
    const auto onScreen = [](int corner, int all) { return std::array{0, corner, all - corner, all}; };
    const auto fromX = inPicture(corners.width);
    const auto fromY = inPicture(corners.height);
    const auto toX = onScreen(corners.width, size.width());
    const auto toY = onScreen(corners.height, size.height());
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column) {
            const QSizeF extent(toX[column + 1] - toX[column], toY[row + 1] - toY[row]);
            if (extent.isEmpty() || (row == 1 && column == 1))
                continue;
            QSGImageNode* piece = window()->createImageNode();
            piece->setTexture(shadow->texture.get());
            piece->setFiltering(QSGTexture::Nearest);
            piece->setSourceRect(fromX[column], fromY[row], fromX[column + 1] - fromX[column],
                                 fromY[row + 1] - fromY[row]);
            piece->setRect(QRectF(QPointF(toX[column], toY[row]) / scale, extent / scale));
            shadow->appendChildNode(piece);
        }
    return shadow.release();
}

void ShadowPicture::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemDevicePixelRatioHasChanged)
        update();
    QQuickItem::itemChange(change, data);
}

} // namespace quillo

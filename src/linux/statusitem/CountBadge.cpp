#include "linux/statusitem/CountBadge.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>
#include <algorithm>
#include <cmath>

namespace quillo {

namespace {

constexpr int largestNumber = 99;

/// White text on it reaches 5.4:1, and it stands out from light and from dark bars.
const QColor badgeColour(0xc4, 0x33, 0x2e);

/// The text's outline, so that small digits are placed to the fraction of a pixel.
QPainterPath outline(const QString& text, double height) {
    QFont font;
    font.setBold(true);
    font.setPixelSize(64); // Larger than any use of it: outlines of small fonts follow the pixels.
    font.setHintingPreference(QFont::PreferNoHinting);
    QPainterPath path;
    path.addText(0, 0, font, text);
    const double scale = height / QFontMetricsF(font).capHeight();
    return QTransform::fromScale(scale, scale).map(path);
}

} // namespace

QString badgeText(const QString& label) {
    bool isNumber = false;
    const qulonglong number = label.toULongLong(&isNumber);
    if (!isNumber || number == 0)
        return {};
    return number > largestNumber ? QStringLiteral("99+") : QString::number(number);
}

QImage withBadge(QImage picture, const QString& text) {
    if (text.isEmpty() || picture.isNull())
        return picture;
    const double edge = picture.width();
    const double height = std::round(edge * 0.6);
    const double gap = std::max(1.0, std::round(edge / 22));
    const QPainterPath glyphs = outline(text, height * 0.64);
    const QRectF ink = glyphs.boundingRect();
    const double width = std::clamp(std::round(ink.width() + height * 0.5), height, edge);
    const QRectF badge(edge - width, edge - height, width, height);

    picture = std::move(picture).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    // A gap in the symbol keeps the two apart on any background. Nothing of it stays in the corner.
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setBrush(Qt::black);
    const double outerRadius = height / 2 + gap;
    painter.drawRoundedRect(badge.adjusted(-gap, -gap, gap, gap), outerRadius, outerRadius);
    painter.drawRect(QRectF(badge.center(), badge.bottomRight()));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setBrush(badgeColour);
    painter.drawRoundedRect(badge, height / 2, height / 2);

    const double fit = std::min(1.0, (width - height * 0.25) / ink.width());
    painter.translate(badge.center());
    painter.scale(fit, fit);
    painter.translate(-ink.center());
    painter.setBrush(Qt::white);
    painter.drawPath(glyphs);
    return picture;
}

} // namespace quillo

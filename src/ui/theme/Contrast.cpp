#include "ui/theme/Contrast.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace quillo {

namespace {

// WCAG 2.1, "relative luminance": https://www.w3.org/TR/WCAG21/#dfn-relative-luminance
double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double ratioOf(double one, double other) {
    const auto [darker, lighter] = std::minmax(one, other);
    return (lighter + 0.05) / (darker + 0.05);
}

double lowestRatio(const QColor& colour, std::span<const double> luminances) {
    const double own = luminance(colour);
    double lowest = 21;
    for (const double each : luminances)
        lowest = std::min(lowest, ratioOf(own, each));
    return lowest;
}

} // namespace

QColor over(const QColor& top, const QColor& below) {
    const auto mix = [alpha = top.alphaF()](float upper, float lower) {
        return upper * alpha + lower * (1 - alpha);
    };
    return QColor::fromRgbF(mix(top.redF(), below.redF()), mix(top.greenF(), below.greenF()),
                            mix(top.blueF(), below.blueF()));
}

double contrastRatio(const QColor& one, const QColor& other) {
    return ratioOf(luminance(one), luminance(other));
}

QColor readable(const QColor& wanted, std::span<const QColor> backgrounds, double ratio) {
    std::vector<double> luminances(backgrounds.size());
    std::transform(backgrounds.begin(), backgrounds.end(), luminances.begin(), luminance);
    const bool darken = lowestRatio(Qt::black, luminances) > lowestRatio(Qt::white, luminances);

    QColor colour = QColor::fromRgb(wanted.red(), wanted.green(), wanted.blue());
    const int hue = colour.hslHue();
    const int saturation = colour.hslSaturation();
    int lightness = colour.lightness();
    while (lowestRatio(colour, luminances) < ratio) {
        lightness += darken ? -1 : 1;
        if (lightness <= 0 || lightness >= 255)
            return darken ? Qt::black : Qt::white;
        colour = QColor::fromHsl(hue, saturation, lightness).toRgb();
    }
    return colour;
}

} // namespace quillo

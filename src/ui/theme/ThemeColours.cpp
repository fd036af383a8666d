#include "ui/theme/ThemeColours.h"

#include "ui/theme/Contrast.h"

#include <array>

namespace quillo {

namespace {

constexpr double textContrast = 4.5;   // WCAG 2.1, 1.4.3
constexpr double highTextContrast = 7; // WCAG 2.1, 1.4.6
constexpr double symbolContrast = 3;   // WCAG 2.1, 1.4.11
constexpr float materialAlpha = 0.97F; // nothing blurs what is behind, so next to nothing may show

QColor white(double alpha = 1) {
    return QColor::fromRgbF(1, 1, 1, static_cast<float>(alpha));
}
QColor black(double alpha = 1) {
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(alpha));
}

QColor withAlpha(QColor colour, float alpha) {
    colour.setAlphaF(alpha);
    return colour;
}

void paintLight(ThemeColours& colours) {
    colours.window = QColor(0xF7, 0xF7, 0xF9);
    colours.bar = white(0.55);
    colours.field = white();
    colours.hover = black(0.045);
    colours.pressed = black(0.09);
    colours.separator = black(0.11);
    colours.stroke = white(0.10);
    colours.text = QColor(0x1C, 0x1C, 0x1F);
    colours.secondary = QColor(0x43, 0x44, 0x4A);
}

void paintDark(ThemeColours& colours) {
    colours.window = QColor(0x20, 0x20, 0x23);
    colours.bar = white(0.035);
    colours.field = QColor(0x2C, 0x2C, 0x30);
    colours.hover = white(0.055);
    colours.pressed = white(0.11);
    colours.separator = white(0.12);
    colours.stroke = white(0.10);
    colours.text = QColor(0xF3, 0xF3, 0xF5);
    colours.secondary = QColor(0xBD, 0xBE, 0xC4);
}

void paintHighContrast(ThemeColours& colours, bool dark) {
    colours.window = dark ? black() : white();
    colours.field = colours.window;
    colours.text = dark ? white() : black();
    colours.secondary = dark ? QColor(0xE0, 0xE0, 0xE0) : QColor(0x26, 0x26, 0x26);
    colours.hover = withAlpha(colours.text, 0.12F);
    colours.pressed = withAlpha(colours.text, 0.20F);
    colours.separator = colours.text;
    colours.stroke = colours.text;
}

QColor opaqueColour(const Colour& colour) {
    return QColor::fromRgbF(static_cast<float>(colour.red), static_cast<float>(colour.green),
                            static_cast<float>(colour.blue));
}

} // namespace

std::vector<QColor> textBackgrounds(const ThemeColours& colours) {
    std::vector<QColor> backgrounds{colours.window, colours.field, over(colours.hover, colours.window)};
    for (const QColor& behind : {white(), black()}) {
        const QColor material = over(colours.material, behind);
        for (const QColor& top : {colours.bar, colours.hover})
            backgrounds.push_back(over(top, material));
        backgrounds.push_back(material);
    }
    return backgrounds;
}

ThemeColours themeColours(const Appearance& appearance, const QColor& accent) {
    ThemeColours colours;
    if (appearance.highContrast)
        paintHighContrast(colours, appearance.dark);
    else if (appearance.dark)
        paintDark(colours);
    else
        paintLight(colours);

    const bool solid = appearance.reduceTransparency || appearance.highContrast;
    colours.material = solid ? colours.window : withAlpha(colours.window, materialAlpha);
    if (solid)
        colours.bar = colours.window;

    const std::vector<QColor> backgrounds = textBackgrounds(colours);
    const double contrast = appearance.highContrast ? highTextContrast : textContrast;
    const auto asText = [&](const QColor& colour) { return readable(colour, backgrounds, contrast); };

    colours.faint = appearance.highContrast ? colours.secondary : withAlpha(colours.secondary, 0.6F);
    colours.faintText = asText(over(colours.faint, colours.window));
    colours.placeholder = colours.faintText;

    colours.accent = appearance.accent ? opaqueColour(*appearance.accent) : accent;
    const std::array onAccent{colours.accent};
    const bool lightOnAccent = contrastRatio(white(), colours.accent) >= textContrast;
    colours.accentText = lightOnAccent ? white() : readable(colours.accent, onAccent, contrast);
    colours.accentSymbol =
        contrastRatio(white(), colours.accent) >= symbolContrast ? white() : colours.accentText;
    colours.accentLabel = asText(colours.accent);
    colours.focusRing = readable(colours.accent, backgrounds, symbolContrast);

    colours.doneGreen = QColor::fromRgbF(0.31F, 0.73F, 0.50F);
    colours.onDone = white();
    colours.todayOrange = QColor::fromRgbF(0.95F, 0.64F, 0.30F);
    colours.todayText = asText(colours.todayOrange);
    colours.overdueRed = QColor::fromRgbF(0.91F, 0.38F, 0.35F);
    colours.overdueText = asText(colours.overdueRed);
    return colours;
}

} // namespace quillo

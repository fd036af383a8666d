#include "ui/theme/Theme.h"

#include <QEvent>
#include <QFontInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlEngine>
#include <algorithm>
#include <cmath>

namespace quillo {

namespace {

// The windows have fixed sizes; beyond these a text would be lost in them, or cut off.
constexpr int smallestFont = 10;
constexpr int largestFont = 22;

Theme* instance = nullptr;

int scaled(int size, double factor) {
    return static_cast<int>(std::lround(size * factor));
}

} // namespace

Theme::Theme(const AppearanceSettings& settings) : settings_(settings) {
    following_ = settings.appearance().observe([this](const Appearance&) { update(); });
    qGuiApp->installEventFilter(this);
    update();
}

void Theme::setInstance(Theme* theme) {
    instance = theme;
}

Theme* Theme::create(QQmlEngine* /*engine*/, QJSEngine* /*scripts*/) {
    Q_ASSERT(instance != nullptr);
    QJSEngine::setObjectOwnership(instance, QJSEngine::CppOwnership);
    return instance;
}

int Theme::captionSize() const {
    return scaled(fontSize_, 0.88);
}

int Theme::titleSize() const {
    return scaled(fontSize_, 1.25);
}

bool Theme::eventFilter(QObject* watched, QEvent* event) {
    // QGuiApplication's own signals for this are on their way out.
    if (watched == qGuiApp &&
        (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::ApplicationFontChange))
        update();
    return false;
}

void Theme::update() {
    const QPalette palette = QGuiApplication::palette();
    Appearance appearance = settings_.appearance().get();
    // A platform theme may paint programs dark without the settings saying so.
    appearance.dark |=
        palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    appearance.reduceTransparency |= appearance.highContrast;
    const ThemeColours colours = themeColours(appearance, palette.color(QPalette::Highlight));
    const int fontSize =
        std::clamp(QFontInfo(QGuiApplication::font()).pixelSize(), smallestFont, largestFont);

    if (appearance == appearance_ && colours == colours_ && fontSize == fontSize_)
        return;
    appearance_ = appearance;
    colours_ = colours;
    fontSize_ = fontSize;
    Q_EMIT changed();
}

} // namespace quillo

#include "ui/popover/Popover.h"

#include "ui/placement/WindowPlacement.h"
#include "ui/popover/PopoverModel.h"
#include "ui/windows/MakeWindow.h"
#include "ui/windows/PresentWindow.h"

#include <QCursor>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QVariant>
#include <utility>

namespace quillo {

namespace {

/// A click on the icon first takes the keyboard away, which closes the popover, and then asks for it.
constexpr int sameClickMilliseconds = 250;

constexpr int fadeMilliseconds = 100;

} // namespace

Popover::Popover(Engine engine, PopoverModel& model, const AppearanceSettings& appearance,
                 WithoutWindowManager withoutWindowManager)
    : engine_(std::move(engine)), model_(model), appearance_(appearance),
      withoutWindowManager_(std::move(withoutWindowManager)),
      loss_([this] { return !shown_ || window_->isActive(); },
            [this] {
                close();
                sinceFocusLoss_.start();
            }) {
    connect(&model_, &PopoverModel::closeRequested, this, &Popover::close);
    connect(&fading_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& opacity) { window_->setOpacity(opacity.toDouble()); });
    connect(&fading_, &QVariantAnimation::finished, this, [this] {
        if (!shown_)
            window_->hide();
    });
}

Popover::~Popover() = default;

void Popover::show(const std::optional<ScreenPoint>& anchor, const std::string& activationToken) {
    if (!window_ && !make())
        return;
    const bool comes = !shown_;
    if (comes) {
        place(anchor);
        loss_.aboutToShow();
        setShown(true);
        fadeTo(1);
    }
    present(*window_, activationToken);
    if (comes && keyboard_)
        keyboard_->take();
}

void Popover::close() {
    if (!shown_)
        return;
    setShown(false);
    if (keyboard_)
        keyboard_->giveBack();
    fadeTo(0);
}

void Popover::toggle(const std::optional<ScreenPoint>& anchor, const std::string& activationToken) {
    if (shown_)
        close();
    else if (!sinceFocusLoss_.isValid() || sinceFocusLoss_.hasExpired(sameClickMilliseconds))
        show(anchor, activationToken);
}

bool Popover::make() {
    window_ = makeWindow(engine_(), QStringLiteral("PopoverWindow.qml"),
                         {{QStringLiteral("model"), QVariant::fromValue(&model_)}});
    if (!window_)
        return false;
    if (withoutWindowManager_)
        keyboard_ = withoutWindowManager_(*window_);
    const auto blend = [this](const Appearance& appearance) {
        window_->setProperty("translucent", !appearance.reduceTransparency);
    };
    blend(appearance_.appearance().get());
    appearanceChanged_ = appearance_.appearance().observe(blend);
    connect(window_.get(), &QWindow::activeChanged, this, [this] {
        if (!shown_)
            return;
        // A window manager that hears only now that the last window has gone gives the keyboard to nobody,
        // though this window, which it does not know, has got it meanwhile.
        if (keyboard_ && !window_->isActive() && loss_.isSettling())
            keyboard_->takeFromNobody();
        loss_.check();
    });
    // A window manager may close it, too.
    connect(window_.get(), &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible)
            setShown(false);
    });
    return true;
}

void Popover::place(const std::optional<ScreenPoint>& anchor) {
    const std::vector<ScreenArea> screens = currentScreens();
    const auto spot = anchor ? fromDevicePixels({anchor->x, anchor->y}, screens) : std::nullopt;
    // What surrounds the popover is its shadow, which may lie under panels and beyond edges.
    const int shadow = window_->property("shadowWidth").toInt();
    const QSize size = window_->size() - QSize(2 * shadow, 2 * shadow);
    // Asking for the pointer waits for the X server.
    const QPoint pointer = spot ? *spot : QCursor::pos();
    if (const auto corner = popoverPosition(spot, pointer, size, screens))
        window_->setPosition(*corner - QPoint(shadow, shadow));
}

void Popover::setShown(bool shown) {
    shown_ = shown;
    model_.setActive(shown);
    Q_EMIT shownChanged(shown);
}

void Popover::fadeTo(double opacity) {
    const Appearance& appearance = appearance_.appearance().get();
    // Wayland's windows have no opacity.
    const bool fades = !appearance.reduceTransparency && !appearance.reduceMotion &&
                       QGuiApplication::platformName() == QLatin1String("xcb");
    const double from = window_->isVisible() ? window_->opacity() : 0;
    fading_.stop();
    fading_.setStartValue(fades ? from : opacity);
    fading_.setEndValue(opacity);
    fading_.setDuration(fades ? fadeMilliseconds : 0);
    window_->setOpacity(fading_.startValue().toDouble());
    fading_.start();
}

} // namespace quillo

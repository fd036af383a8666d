#include "ui/quickadd/QuickAddController.h"

#include "base/Log.h"
#include "ui/placement/WindowPlacement.h"

#include <QCursor>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QVariant>
#include <utility>

namespace quillo {

namespace {

/// A window manager takes the keyboard for itself while it moves a window, and gives it back thereafter.
constexpr qint64 moveStartsWithinMilliseconds = 300;

} // namespace

QuickAddController::QuickAddController(Engine engine, QuickAddModel::Submission submission,
                                       Preparation prepare)
    : engine_(std::move(engine)), prepare_(std::move(prepare)), model_(std::move(submission)) {
    connect(&model_, &QuickAddModel::finished, this, &QuickAddController::hide);
    connect(&model_, &QuickAddModel::moveRequested, this, &QuickAddController::move);
}

QuickAddController::~QuickAddController() = default;

void QuickAddController::show(const std::string& activationToken) {
    if (!panel_ && !make())
        return;
    model_.begin();
    place();
    if (prepare_)
        prepare_(*panel_);
    panel_->show();
    panel_->raise();
    // Where Qt looks for it, and takes it away, when a window asks for the keyboard under Wayland.
    if (!activationToken.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activationToken));
    panel_->requestActivate();
}

void QuickAddController::hide() {
    if (panel_)
        panel_->hide();
}

bool QuickAddController::isVisible() const {
    return panel_ && panel_->isVisible();
}

bool QuickAddController::make() {
    QQmlComponent component(&engine_(), QUrl(QStringLiteral("qrc:/qt/qml/Quillo/QuickAddPanel.qml")));
    std::unique_ptr<QObject> object(
        component.createWithInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&model_)}}));
    if (qobject_cast<QQuickWindow*>(object.get()) == nullptr) {
        log("the quick-add panel cannot be shown: " + component.errorString().toStdString());
        return false;
    }
    panel_.reset(static_cast<QQuickWindow*>(object.release()));
    connect(panel_.get(), &QWindow::activeChanged, this, [this] {
        if (!panel_->isActive())
            leave();
    });
    return true;
}

void QuickAddController::place() {
    // What surrounds the panel, its shadow, is as wide on all sides: its middle is the window's.
    if (const auto corner = quickAddPosition(QCursor::pos(), panel_->size(), currentScreens()))
        panel_->setPosition(*corner);
}

void QuickAddController::move() {
    sinceMove_.start();
    panel_->startSystemMove();
}

/// The keyboard is elsewhere.
void QuickAddController::leave() {
    if (!sinceMove_.isValid() || sinceMove_.hasExpired(moveStartsWithinMilliseconds))
        hide();
}

} // namespace quillo

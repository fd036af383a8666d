#include "ui/quickadd/QuickAddController.h"

#include "ui/placement/WindowPlacement.h"
#include "ui/windows/MakeWindow.h"
#include "ui/windows/PresentWindow.h"

#include <QCursor>
#include <QGuiApplication>
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
    : engine_(std::move(engine)), prepare_(std::move(prepare)), model_(std::move(submission)),
      loss_([this] { return panel_->isActive(); }, [this] { leave(); }) {
    connect(&model_, &QuickAddModel::finished, this, &QuickAddController::hide);
    connect(&model_, &QuickAddModel::moveRequested, this, &QuickAddController::move);
}

QuickAddController::~QuickAddController() = default;

void QuickAddController::show(const std::string& activationToken) {
    if (!panel_ && !make())
        return;
    model_.begin();
    place();
    if (!panel_->isVisible())
        loss_.aboutToShow();
    if (prepare_)
        prepare_(*panel_);
    present(*panel_, activationToken);
}

void QuickAddController::hide() {
    if (panel_)
        panel_->hide();
}

bool QuickAddController::isVisible() const {
    return panel_ && panel_->isVisible();
}

bool QuickAddController::make() {
    panel_ = makeWindow(engine_(), QStringLiteral("QuickAddPanel.qml"),
                        {{QStringLiteral("model"), QVariant::fromValue(&model_)}});
    if (!panel_)
        return false;
    // A menu of the panel has a window of its own: while that has the keyboard, so has the panel.
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this] {
        if (std::exchange(hadKeyboard_, panel_->isActive()) && !hadKeyboard_)
            loss_.check();
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

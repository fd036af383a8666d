#include "ui/windows/KeptWindow.h"

#include "ui/windows/MakeWindow.h"
#include "ui/windows/PresentWindow.h"

#include <QCursor>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QScreen>
#include <utility>

namespace quillo {

namespace {

void centre(QWindow& window) {
    QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return;
    QRect place(QPoint(), window.size());
    place.moveCenter(screen->availableGeometry().center());
    window.setPosition(place.topLeft());
}

} // namespace

KeptWindow::KeptWindow(Engine engine, QString file, QVariantMap properties)
    : engine_(std::move(engine)), file_(std::move(file)), properties_(std::move(properties)) {}

KeptWindow::~KeptWindow() = default;

void KeptWindow::show(const std::string& activationToken) {
    if (make())
        present(*window_, activationToken);
}

void KeptWindow::showAside() {
    if (make())
        quillo::showAside(*window_);
}

void KeptWindow::hide() {
    if (window_)
        window_->hide();
}

/// Unless it is there; false where it cannot be made.
bool KeptWindow::make() {
    if (!window_) {
        window_ = makeWindow(engine_(), file_, properties_);
        if (window_)
            centre(*window_);
    }
    return window_ != nullptr;
}

} // namespace quillo

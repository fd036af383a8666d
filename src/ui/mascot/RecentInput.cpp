#include "ui/mascot/RecentInput.h"

#include <QEvent>

namespace quillo {

RecentInput::RecentInput(QObject* parent) : QObject(parent) {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &RecentInput::onTimeout);
}

void RecentInput::setWindow(QWindow* window) {
    if (window == window_)
        return;
    if (window_)
        window_->removeEventFilter(this);
    window_ = window;
    if (window_)
        window_->installEventFilter(this);
    if (window_ && window_->isVisible())
        note();
    else
        end();
    Q_EMIT windowChanged();
}

bool RecentInput::eventFilter(QObject* watched, QEvent* event) {
    if (watched != window_)
        return false;
    const QEvent::Type type = event->type();
    if (type == QEvent::Hide)
        end();
    else if (type == QEvent::Show || type == QEvent::KeyPress || type == QEvent::MouseButtonPress ||
             type == QEvent::MouseMove || type == QEvent::Wheel || type == QEvent::TouchBegin)
        note();
    return false;
}

void RecentInput::note() {
    sinceInput_.start();
    if (recent())
        return;
    timer_.start(patience_);
    Q_EMIT recentChanged();
}

void RecentInput::end() {
    if (!recent())
        return;
    timer_.stop();
    Q_EMIT recentChanged();
}

void RecentInput::onTimeout() {
    const qint64 left = patience_ - sinceInput_.elapsed();
    if (left > 0)
        timer_.start(static_cast<int>(left));
    else
        Q_EMIT recentChanged();
}

} // namespace quillo

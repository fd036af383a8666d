/// Whether somebody is there.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>

namespace quillo {

/// Tells whether a window has had any input lately: a key, a pointer or a touch, or being shown. What moves
/// only to be looked at moves while that is so, and a window that was left open costs nothing. Lives on the
/// main thread.
class RecentInput : public QObject {
    Q_OBJECT
    QML_ELEMENT

    /// May be null. It is not owned.
    Q_PROPERTY(QWindow* window READ window WRITE setWindow NOTIFY windowChanged)
    /// For how long after an input it is recent, in milliseconds.
    Q_PROPERTY(int patience MEMBER patience_ NOTIFY patienceChanged)
    /// False while the window is hidden.
    Q_PROPERTY(bool recent READ recent NOTIFY recentChanged)

public:
    explicit RecentInput(QObject* parent = nullptr);

    QWindow* window() const { return window_; }
    void setWindow(QWindow* window);
    bool recent() const { return timer_.isActive(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void windowChanged();
    void patienceChanged();
    void recentChanged();

private:
    void note();
    void end();
    void onTimeout();

    QPointer<QWindow> window_;
    int patience_ = 30'000;
    QElapsedTimer sinceInput_;
    QTimer timer_; ///< started once, not with every input: moving a pointer must cost nothing
};

} // namespace quillo

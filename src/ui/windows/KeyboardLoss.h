/// Windows that go when the keyboard does.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <functional>

namespace quillo {

/// Tells when a window that is shown has lost the keyboard. Qt 6.4 tells of it up to 400 ms late under X11:
/// when a window is shown again soon, what it lost when it was hidden is heard only then, and must not hide
/// it at once. So a loss soon after the showing counts only if the keyboard does not come thereafter. Belongs
/// to the main thread.
class KeyboardLoss {
public:
    KeyboardLoss(std::function<bool()> hasKeyboard, std::function<void()> lost);

    /// To be called when the window is about to be shown.
    void aboutToShow() { sinceShown_.start(); }

    /// Whether the showing is so recent that a loss does not count yet.
    bool isSettling() const;

    /// To be called when it may have lost the keyboard.
    void check();

private:
    const std::function<bool()> hasKeyboard_;
    const std::function<void()> lost_;
    QElapsedTimer sinceShown_;
    QObject later_; ///< what waits for it ends with this
};

} // namespace quillo

/// The keyboard, for a window that no window manager gives it to.
#pragma once

namespace quillo {

/// Belongs to the main thread and to one window, which outlives it.
class BorrowedKeyboard {
public:
    virtual ~BorrowedKeyboard() = default;

    /// Gives the keyboard to the window, which has just been shown. Does not wait.
    virtual void take() = 0;

    /// Gives it to the window once more where no program has it and the user is on the same workspace still;
    /// once after each take(). Waits for an answer of the screen's server.
    virtual void takeFromNobody() = 0;

    /// Gives it back to who had it, unless another window has taken it meanwhile. To be called before the
    /// window is hidden; nothing where it was not taken.
    virtual void giveBack() = 0;
};

} // namespace quillo

/// Windows that are shown without the window manager, as menus are under X11.
#pragma once

#include "ports/BorrowedKeyboard.h"

#include <memory>

class QWindow;

namespace quillo {

/// Keeps the window manager off a window that has never been shown, so that it is shown at once: what a
/// window manager asks of a window before that takes twice as long as all else. What the window manager would
/// have done about the keyboard is left to the caller.
///
/// Null, and the window is as it was, where that cannot be: on Wayland, in an X server that is a guest of a
/// Wayland compositor, and with a window manager that is not known to notice when the keyboard goes to such a
/// window; it would not give the keyboard back to the window that it believes has it, when that one is
/// clicked. Asks the X server, and waits for its answers. Main thread.
std::unique_ptr<BorrowedKeyboard> withoutWindowManager(QWindow& window);

} // namespace quillo

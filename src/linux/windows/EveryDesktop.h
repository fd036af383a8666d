/// Windows that are not left behind on one of several desktops.
#pragma once

class QWindow;

namespace quillo {

/// Before the window is shown, each time: shows it on every desktop (Extended Window Manager Hints,
/// _NET_WM_DESKTOP: https://specifications.freedesktop.org/wm-spec/latest/). On Wayland a compositor shows
/// new windows on the desktop that is seen, and there is nothing to ask for.
void showOnEveryDesktop(QWindow& window);

} // namespace quillo

/// How windows come to the user.
#pragma once

#include <string>

class QWindow;

namespace quillo {

/// Shows the window above all others, with the keyboard in it. The token (of XDG activation; may be empty)
/// lets it have the keyboard where windows may not take it by themselves. Main thread.
void present(QWindow& window, const std::string& activationToken);

/// Shows the window, and leaves the keyboard where it is. Main thread.
void showAside(QWindow& window);

} // namespace quillo

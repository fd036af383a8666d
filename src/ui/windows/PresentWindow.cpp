#include "ui/windows/PresentWindow.h"

#include <QByteArray>
#include <QWindow>

namespace quillo {

void present(QWindow& window, const std::string& activationToken) {
    window.show();
    window.raise();
    // Where Qt looks for it, and takes it away, when a window asks for the keyboard under Wayland.
    if (!activationToken.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activationToken));
    window.requestActivate();
}

} // namespace quillo

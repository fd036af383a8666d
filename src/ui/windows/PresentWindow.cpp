#include "ui/windows/PresentWindow.h"

#include <QByteArray>
#include <QVariant>
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

void showAside(QWindow& window) {
    // What QWidget's WA_ShowWithoutActivating does, for which a QWindow has no name of its own.
    constexpr const char* withoutActivating = "_q_showWithoutActivating";
    window.setProperty(withoutActivating, true);
    window.show();
    window.setProperty(withoutActivating, QVariant());
}

} // namespace quillo

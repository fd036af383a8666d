#include "linux/statusitem/ModifierKeys.h"

#include <QGuiApplication>

namespace quillo {

bool controlHeld() {
    return QGuiApplication::platformName() == QLatin1String("xcb") &&
           QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ControlModifier);
}

} // namespace quillo

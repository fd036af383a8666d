/// The shell's texts in the user's language.
#pragma once

#include <QCoreApplication>
#include <string>

namespace quillo {

/// The text, marked with QT_TRANSLATE_NOOP("Quillo", …) where it stands. Main thread.
inline std::string translated(const char* text) {
    return QCoreApplication::translate("Quillo", text).toStdString();
}

} // namespace quillo

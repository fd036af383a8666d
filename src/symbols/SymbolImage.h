/// The program's symbols as pictures.
#pragma once

#include <QColor>
#include <QImage>
#include <string_view>

namespace quillo {

/// The symbol of this name, such as "bell.fill", in one colour: a square of `pixels` (1 to 1024), transparent
/// around it. Reads ":/qt/qml/Quillo/icons/<name>.svg" of the program's resources. A null image, and a line
/// in the log, where there is none. Any thread.
QImage symbolImage(std::string_view name, const QColor& colour, int pixels);

} // namespace quillo

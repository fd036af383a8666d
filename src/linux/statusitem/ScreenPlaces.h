/// Places on the screens, between the windowing system's pixels and Qt's coordinates.
#pragma once

#include "ports/StatusItem.h"

#include <QPoint>
#include <optional>

namespace quillo {

/// The place that a bar gave, if it is one: bars that do not know it say 0, 0, and what lies on no screen is
/// none either.
std::optional<ScreenPoint> placeFromBar(int x, int y);

/// Where the pointer is.
ScreenPoint pointerPlace();

QPoint toQtCoordinates(const ScreenPoint& place);

} // namespace quillo

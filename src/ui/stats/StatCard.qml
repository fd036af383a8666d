import QtQuick
import Quillo

/// What belongs together in the statistics stands on one of these.
Rectangle {
    radius: 10
    color: Theme.field
    border.width: 1
    border.color: Theme.separator
}

import QtQuick
import Quillo

/// What menus and cards are drawn on.
Item {
    SoftShadow {
        anchors.fill: parent
        cornerRadius: 8
        reach: 6
        strength: Theme.dark ? 0.3 : 0.08
    }

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Theme.window
        border.width: 1
        border.color: Theme.separator
    }
}

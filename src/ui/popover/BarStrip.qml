import QtQuick
import Quillo

/// A strip along the popover's upper or lower edge, whose outer corners are those of the popover.
Item {
    id: root

    required property real cornerRadius
    required property bool atTop

    clip: true

    Rectangle {
        y: root.atTop ? 0 : -radius
        width: parent.width
        height: parent.height + radius
        radius: root.cornerRadius
        color: Theme.bar
    }

    Rectangle {
        y: root.atTop ? parent.height - 1 : 0
        width: parent.width
        height: 1
        color: Theme.separator
    }
}

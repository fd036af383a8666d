import QtQuick
import Quillo

/// Shows that what it is put into has the keyboard.
Rectangle {
    id: root

    /// Between the ring and what it is put around, where that is as colourful as the ring.
    property real gap: 0
    /// Of what it is put around.
    property real cornerRadius: 6

    anchors.fill: parent
    anchors.margins: -2 - gap
    visible: parent.activeFocus
    color: "transparent"
    radius: cornerRadius + 2 + gap
    border.width: 2
    border.color: Theme.focusRing
}

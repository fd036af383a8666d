import QtQuick
import Quillo

/// The frame of a compact picker.
Item {
    id: root

    required property string name
    /// What the picker shows, for those who cannot see it.
    required property string shown

    implicitHeight: Math.max(28, Theme.fontSize + 15)
    activeFocusOnTab: true

    Accessible.name: name
    Accessible.description: shown
    Accessible.focusable: true

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: Theme.field
        border.width: 1
        border.color: Theme.separator
    }

    FocusRing {}
}

import QtQuick
import Quillo

/// A symbol without a frame until the pointer is over it.
Pressable {
    id: root

    required property string symbol
    property real symbolSize: 16
    property color symbolColor: hovered ? Theme.text : Theme.secondary

    implicitWidth: 28
    implicitHeight: 28

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: root.pressed ? Theme.pressed : Theme.hover
        visible: root.hovered || root.pressed
    }

    Icon {
        anchors.centerIn: parent
        symbol: root.symbol
        size: root.symbolSize
        color: root.symbolColor
    }
}

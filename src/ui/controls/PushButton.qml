import QtQuick
import Quillo

/// A button with a text, and perhaps a symbol before it. A prominent one is what Return does; a destructive one does what
/// cannot be undone.
Pressable {
    id: root

    required property string text
    property string symbol
    property bool prominent: false
    property bool destructive: false
    property bool large: false

    readonly property color ink: prominent ? Theme.accentText : destructive ? Theme.overdueText : Theme.text
    readonly property real symbolRoom: symbol ? icon.width + 8 : 0

    name: text
    ringGap: prominent ? 2 : 0
    Accessible.defaultButton: prominent
    implicitWidth: label.implicitWidth + symbolRoom + 24
    implicitHeight: Math.max(large ? 36 : 28, label.implicitHeight + (large ? 18 : 12))
    opacity: enabled ? 1 : 0.4

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: root.prominent ? Theme.accent : Theme.field
        border.width: root.prominent ? 0 : 1
        border.color: Theme.separator

        Rectangle {
            anchors.fill: parent
            radius: root.cornerRadius
            color: root.pressed ? Theme.pressed : Theme.hover
            visible: root.hovered || root.pressed
        }
    }

    Icon {
        id: icon
        anchors.right: label.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        visible: root.symbol !== ""
        symbol: root.symbol
        color: root.ink
    }

    Text {
        id: label
        anchors.centerIn: parent
        anchors.horizontalCenterOffset: (LayoutMirroring.enabled ? -1 : 1) * root.symbolRoom / 2
        width: Math.min(implicitWidth, root.width - 16 - root.symbolRoom)
        height: parent.height
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        text: root.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
        font.pixelSize: Theme.fontSize
        color: root.ink
        Accessible.ignored: true
    }
}

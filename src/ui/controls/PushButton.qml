import QtQuick
import Quillo

/// A button with a text. A prominent one is what Return does.
Pressable {
    id: root

    required property string text
    property bool prominent: false

    name: text
    ringGap: prominent ? 2 : 0
    Accessible.defaultButton: prominent
    implicitWidth: label.implicitWidth + 24
    implicitHeight: Math.max(28, label.implicitHeight + 12)
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

    Text {
        id: label
        anchors.fill: parent
        anchors.leftMargin: 8
        anchors.rightMargin: 8
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        text: root.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 9
        font.pixelSize: Theme.fontSize
        color: root.prominent ? Theme.accentText : Theme.text
        Accessible.ignored: true
    }
}

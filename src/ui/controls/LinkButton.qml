import QtQuick
import Quillo

/// A small button that is nothing but its text.
Pressable {
    id: root

    required property string text

    name: text
    cornerRadius: 4
    implicitWidth: label.implicitWidth + 8
    implicitHeight: label.implicitHeight + 8

    Text {
        id: label
        anchors.centerIn: parent
        text: root.text
        textFormat: Text.PlainText
        font.pixelSize: Theme.captionSize
        font.underline: root.hovered
        color: Theme.accentLabel
        Accessible.ignored: true
    }
}

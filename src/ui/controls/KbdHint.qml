import QtQuick
import Quillo

/// The name of a key or of a shortcut, drawn as a key cap.
Rectangle {
    id: root

    required property string text

    implicitWidth: label.implicitWidth + 12
    implicitHeight: label.implicitHeight + 4
    radius: 4
    color: Theme.field
    border.width: 1
    border.color: Theme.separator

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Text {
        id: label
        anchors.centerIn: parent
        text: root.text
        textFormat: Text.PlainText
        font.pixelSize: Theme.captionSize
        font.weight: Font.DemiBold
        color: Theme.secondary
        Accessible.ignored: true
    }
}

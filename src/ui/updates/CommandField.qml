import QtQuick
import Quillo

/// A command for a terminal, to be copied.
Rectangle {
    id: root

    required property string command

    signal copied(string text)

    implicitHeight: Math.max(label.height, copy.height) + 12
    radius: 6
    color: Theme.field
    border.width: 1
    border.color: Theme.separator

    Text {
        id: label
        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.right: copy.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        wrapMode: Text.Wrap
        // Commands are written from left to right everywhere.
        horizontalAlignment: Text.AlignLeft
        LayoutMirroring.enabled: false
        text: root.command
        textFormat: Text.PlainText
        font.family: "monospace"
        font.pixelSize: Theme.captionSize
        color: Theme.text
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    PushButton {
        id: copy
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Copy")
        onClicked: root.copied(root.command)
    }
}

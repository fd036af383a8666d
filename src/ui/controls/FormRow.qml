import QtQuick
import Quillo

/// A row of a FormSection: a text, help below it where there is some, and at the end the control they speak of, which
/// tells assistive programs what they say.
Item {
    id: root

    property string text
    property string help
    default property alias controls: end.data

    readonly property real margin: 12

    /// Beside the control.
    signal clicked

    width: parent?.width ?? 0
    implicitHeight: Math.max(texts.implicitHeight, end.implicitHeight) + 2 * 10

    MouseArea {
        anchors.fill: parent
        onClicked: root.clicked()
    }

    Rectangle {
        x: root.margin
        width: parent.width - 2 * root.margin
        height: 1
        visible: root.y > 0
        color: Theme.separator
    }

    Column {
        id: texts
        anchors.left: parent.left
        anchors.right: end.left
        anchors.margins: root.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2
        opacity: enabled ? 1 : 0.4

        Text {
            width: parent.width
            visible: text !== ""
            text: root.text
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            wrapMode: Text.Wrap
            font.pixelSize: Theme.fontSize
            color: Theme.text
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            visible: text !== ""
            text: root.help
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            wrapMode: Text.Wrap
            font.pixelSize: Theme.captionSize
            color: Theme.secondary
            Accessible.ignored: true
        }
    }

    Row {
        id: end
        anchors.right: parent.right
        anchors.rightMargin: root.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}

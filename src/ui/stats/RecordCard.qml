import QtQuick
import Quillo

/// The fastest or the slowest task.
StatCard {
    id: root

    required property string symbol
    required property string label
    required property var record

    implicitHeight: column.implicitHeight + 24
    Accessible.role: Accessible.StaticText
    Accessible.name: [root.label, root.record.title, root.record.duration].join(", ")

    Column {
        id: column
        anchors.centerIn: parent
        width: parent.width - 28
        spacing: 6

        Item {
            width: parent.width
            implicitHeight: Math.max(duration.implicitHeight, caption.implicitHeight)

            Icon {
                id: icon
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                symbol: root.symbol
                size: 14
                color: Theme.accentLabel
            }

            Text {
                id: caption
                anchors.left: icon.right
                anchors.leftMargin: 6
                anchors.right: duration.left
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                horizontalAlignment: Text.AlignLeft
                text: root.label
                textFormat: Text.PlainText
                elide: Text.ElideRight
                font.pixelSize: Theme.captionSize
                color: Theme.secondary
                Accessible.ignored: true
            }

            Text {
                id: duration
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: root.record.duration
                textFormat: Text.PlainText
                font.pixelSize: Theme.fontSize
                font.weight: Font.DemiBold
                color: Theme.text
                Accessible.ignored: true
            }
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: root.record.title
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font.pixelSize: Theme.fontSize
            color: Theme.text
            Accessible.ignored: true
        }
    }
}

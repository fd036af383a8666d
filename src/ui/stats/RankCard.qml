import QtQuick
import Quillo

/// The rank, and how far it is to the next one.
StatCard {
    id: root

    required property StatsModel model

    implicitHeight: column.implicitHeight + 28

    Column {
        id: column
        anchors.centerIn: parent
        width: parent.width - 32
        spacing: 8

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: root.model.rank
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font.pixelSize: Theme.titleSize
            font.weight: Font.Bold
            color: Theme.text
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        ProgressBar {
            width: parent.width
            value: root.model.climbed
            animated: root.model.active
            Accessible.ignored: true // said in words below
        }

        Item {
            width: parent.width
            implicitHeight: line.implicitHeight

            Text {
                id: line
                anchors.left: parent.left
                width: Math.min(implicitWidth, parent.width - (crown.visible ? crown.width + 4 : 0))
                horizontalAlignment: Text.AlignLeft
                wrapMode: Text.WordWrap
                text: root.model.drawsCrown ? root.model.progress.replace("👑", "").trim() : root.model.progress
                textFormat: Text.PlainText
                font.pixelSize: Theme.fontSize
                color: Theme.secondary
                Accessible.role: Accessible.StaticText
                Accessible.name: root.model.progress
            }

            Icon {
                id: crown
                anchors.left: line.right
                anchors.leftMargin: 4
                anchors.verticalCenter: line.verticalCenter
                visible: root.model.drawsCrown
                symbol: "crown.fill"
                size: Theme.fontSize
                color: Theme.todayOrange
            }
        }
    }
}

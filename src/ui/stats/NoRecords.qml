import QtQuick
import Quillo

/// Stands where the records will be.
StatCard {
    implicitHeight: column.implicitHeight + 24

    Column {
        id: column
        anchors.centerIn: parent
        width: parent.width - 28
        spacing: 4

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: qsTr("No completions yet")
            textFormat: Text.PlainText
            font.pixelSize: Theme.fontSize
            font.weight: Font.DemiBold
            color: Theme.text
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: qsTr("Complete a few tasks to set a record")
            textFormat: Text.PlainText
            font.pixelSize: Theme.captionSize
            color: Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}

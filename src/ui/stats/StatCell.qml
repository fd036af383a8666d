import QtQuick
import Quillo

/// A number and what it counts.
StatCard {
    id: root

    required property string label
    required property string value

    implicitHeight: column.implicitHeight + 20
    Accessible.role: Accessible.StaticText
    Accessible.name: label + ", " + value

    Column {
        id: column
        anchors.centerIn: parent
        width: parent.width - 16
        spacing: 2

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.value
            textFormat: Text.PlainText
            elide: Text.ElideRight
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 10
            font.pixelSize: Theme.titleSize * 1.2
            font.weight: Font.DemiBold
            color: Theme.text
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.label
            textFormat: Text.PlainText
            elide: Text.ElideRight
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 8
            font.pixelSize: Theme.captionSize
            color: Theme.secondary
            Accessible.ignored: true
        }
    }
}

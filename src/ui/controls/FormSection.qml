import QtQuick
import Quillo

/// A card of rows that belong together, with a heading above it and a line of help below it where there is one.
Column {
    id: root

    property string heading
    property string note
    default property alias rows: column.data

    spacing: 6

    Text {
        x: 2
        width: parent.width - 4
        visible: text !== ""
        text: root.heading
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontSize
        font.weight: Font.DemiBold
        color: Theme.text
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Rectangle {
        width: parent.width
        height: column.implicitHeight
        radius: 8
        color: Theme.field
        border.width: 1
        border.color: Theme.separator

        Column {
            id: column
            width: parent.width
        }
    }

    Text {
        x: 2
        width: parent.width - 4
        visible: text !== ""
        text: root.note
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        font.pixelSize: Theme.captionSize
        color: Theme.secondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}

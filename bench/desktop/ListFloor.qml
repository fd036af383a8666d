import QtQuick

/// A window of the popover's size: an entry field, and a hundred rows of two lines with a checkbox. Of Qt Quick alone,
/// as ready-made controls would make it dearer.
Window {
    width: 360
    height: 480
    visible: true
    title: "List"
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint

    Rectangle {
        id: field
        x: 12
        y: 12
        width: parent.width - 24
        height: 36
        radius: 8
        border.width: 1
        border.color: "grey"

        TextInput {
            anchors.fill: parent
            anchors.margins: 8
            focus: true
        }
    }

    ListView {
        anchors.fill: parent
        anchors.topMargin: 56
        clip: true
        model: 100
        delegate: Item {
            id: row

            required property int index
            property bool done: false

            width: ListView.view.width
            height: 48

            Rectangle {
                id: box
                x: 16
                width: 18
                height: 18
                anchors.verticalCenter: parent.verticalCenter
                radius: 9
                border.width: 1.5
                border.color: "grey"
                color: row.done ? "green" : "transparent"

                MouseArea {
                    anchors.fill: parent
                    onClicked: row.done = !row.done
                }
            }

            Column {
                anchors.left: box.right
                anchors.leftMargin: 12
                anchors.right: parent.right
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter

                Text {
                    width: parent.width
                    elide: Text.ElideRight
                    text: "Task number " + (row.index + 1) + " about something to do"
                }
                Text {
                    color: "grey"
                    font.pixelSize: 11
                    text: "Tomorrow"
                }
            }
        }
    }
}

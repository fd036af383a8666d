import QtQuick
import Quillo

/// A row of buttons, of several lines where they are too long for one.
Item {
    id: root

    default property alias buttons: flow.data

    readonly property real margin: 12

    width: parent?.width ?? 0
    implicitHeight: flow.implicitHeight + 2 * 10

    Rectangle {
        x: root.margin
        width: parent.width - 2 * root.margin
        height: 1
        visible: root.y > 0
        color: Theme.separator
    }

    Flow {
        id: flow
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: root.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}

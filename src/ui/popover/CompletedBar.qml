import QtQuick
import Quillo

/// The way to the done tasks, as long as there are any.
Item {
    id: root

    required property PopoverModel model

    readonly property bool mirrored: LayoutMirroring.enabled

    visible: model.doneCount > 0
    height: visible ? 36 : 0

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 20
        anchors.rightMargin: 20
        height: 1
        color: Theme.separator
    }

    Pressable {
        id: toggle
        anchors.left: parent.left
        anchors.leftMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, root.width - 40 - count.implicitWidth - hide.width)
        implicitWidth: 36 + label.implicitWidth + 8
        height: 24
        name: label.text
        onClicked: root.model.showCompleted = !root.model.showCompleted

        Rectangle {
            anchors.fill: parent
            radius: parent.cornerRadius
            color: toggle.pressed ? Theme.pressed : Theme.hover
            visible: toggle.hovered
        }

        Icon {
            id: chevron
            anchors.left: parent.left
            anchors.leftMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            symbol: root.model.showCompleted ? "chevron.down" : root.mirrored ? "chevron.left" : "chevron.right"
            size: 12
            color: Theme.secondary
        }

        Text {
            id: label
            anchors.left: chevron.right
            anchors.leftMargin: 14
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            verticalAlignment: Text.AlignVCenter
            text: root.model.showCompleted ? qsTr("Hide completed tasks") : qsTr("Show completed tasks")
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignLeft
            elide: Text.ElideRight
            wrapMode: Text.Wrap
            maximumLineCount: 2
            fontSizeMode: Text.Fit
            minimumPixelSize: 9
            font.pixelSize: Theme.captionSize
            color: Theme.secondary
            Accessible.ignored: true
        }
    }

    Text {
        id: count
        anchors.right: hide.left
        anchors.rightMargin: hide.visible ? 4 : 0
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("%lld done", "", root.model.doneCount).replace("%lld", Number(root.model.doneCount).toLocaleString(Qt.locale(), "f", 0))
        textFormat: Text.PlainText
        font.pixelSize: Theme.captionSize
        color: Theme.secondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    LinkButton {
        id: hide
        anchors.right: parent.right
        anchors.rightMargin: visible ? 16 : 20
        anchors.verticalCenter: parent.verticalCenter
        visible: root.model.showCompleted
        width: visible ? implicitWidth : 0
        text: qsTr("Hide done")
        onClicked: root.model.showCompleted = false
    }
}

import QtQuick
import Quillo

/// The quick-add panel: one line to type a task into.
FocusScope {
    id: root

    required property QuickAddModel model
    /// Whether it has a shadow and round corners, or is square with a line around it.
    property bool floating: true

    focus: true

    Keys.onEscapePressed: root.model.cancel()

    Rectangle {
        id: background
        anchors.fill: parent
        radius: root.floating ? 16 : 0
        color: Theme.material
    }

    // By itself: a border of the background would leave out the material beneath.
    Rectangle {
        anchors.fill: parent
        radius: background.radius
        color: "transparent"
        border.width: 1
        border.color: root.floating ? Theme.stroke : Theme.separator
    }

    Rectangle {
        id: badge
        anchors.left: parent.left
        anchors.leftMargin: 22
        anchors.verticalCenter: parent.verticalCenter
        width: 28
        height: 28
        radius: 14
        color: Theme.accent

        Icon {
            anchors.centerIn: parent
            symbol: "plus"
            size: 14
            color: Theme.accentSymbol
            Accessible.ignored: true
        }
    }

    EntryInput {
        id: input
        anchors.left: badge.right
        anchors.leftMargin: 14
        anchors.right: keyCap.visible ? keyCap.left : parent.right
        anchors.rightMargin: keyCap.visible ? 14 : 22
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        focus: true
        font.pixelSize: Theme.titleSize
        name: qsTr("New task")
        hint: qsTr("Press Return to add. Press Escape to cancel.")
        placeholder: qsTr("Add a task — try “Email Sam in 2 hours”")
        readOnly: root.model.locked
        text: root.model.text
        onTextEdited: root.model.text = text
        onSubmitted: root.model.submit()
    }

    Rectangle {
        id: keyCap
        anchors.right: parent.right
        anchors.rightMargin: 22
        anchors.verticalCenter: parent.verticalCenter
        visible: input.length > 0
        width: Math.max(height, label.implicitWidth + 12)
        height: label.implicitHeight + 6
        radius: 5
        color: Theme.field
        border.width: 1
        border.color: Theme.separator

        Accessible.role: Accessible.StaticText
        Accessible.name: label.text

        Text {
            id: label
            anchors.centerIn: parent
            text: "⏎"
            textFormat: Text.PlainText
            font.family: "monospace"
            font.pixelSize: Theme.captionSize
            font.weight: Font.DemiBold
            color: Theme.secondary
            Accessible.ignored: true
        }
    }
}

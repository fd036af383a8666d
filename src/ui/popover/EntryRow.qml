import QtQuick
import Quillo

/// Where a new task is typed.
FocusScope {
    id: root

    required property PopoverModel model

    implicitHeight: Math.max(36, 4 * Math.ceil((Theme.fontSize + 22) / 4))

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Theme.field
        border.width: input.activeFocus ? 2 : 1
        border.color: input.activeFocus ? Theme.focusRing : Theme.separator
    }

    Icon {
        id: plus
        anchors.left: parent.left
        anchors.leftMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        symbol: "plus"
        size: 16
        color: input.activeFocus ? Theme.accent : Theme.secondary
        Accessible.ignored: true
    }

    EntryInput {
        id: input
        anchors.left: plus.right
        anchors.leftMargin: 11
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        focus: true
        name: qsTr("New task")
        hint: qsTr("Press Return to add. Use natural language for dates and times.")
        placeholder: qsTr("Add a task — try “Call mom tomorrow at 9am”")
        text: root.model.newItemText
        onTextChanged: {
            if (root.model.newItemText !== text)
                root.model.newItemText = text;
        }
        onSubmitted: root.model.submit()
    }
}

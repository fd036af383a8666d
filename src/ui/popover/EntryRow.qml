import QtQuick
import Quillo

/// Where a new task is typed.
FocusScope {
    id: root

    required property PopoverModel model
    /// What the field's menu opens in.
    required property Item surface

    readonly property bool chosen: input.activeFocus || input.menuShown

    implicitHeight: Math.max(36, 4 * Math.ceil((Theme.fontSize + 22) / 4))

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Theme.field
        border.width: root.chosen ? 2 : 1
        border.color: root.chosen ? Theme.focusRing : Theme.separator
    }

    Icon {
        id: plus
        anchors.left: parent.left
        anchors.leftMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        symbol: "plus"
        size: 16
        color: root.chosen ? Theme.accent : Theme.secondary
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
        surface: root.surface
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

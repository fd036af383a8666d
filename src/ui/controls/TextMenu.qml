import QtQuick
import Quillo

/// The context menu of a text field.
PopupMenu {
    id: root

    required property TextInput field

    PopupMenuItem {
        text: qsTr("Undo")
        enabled: root.field.canUndo && !root.field.readOnly
        onTriggered: root.field.undo()
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Cut")
        enabled: root.field.selectedText !== "" && !root.field.readOnly
        onTriggered: root.field.cut()
    }
    PopupMenuItem {
        text: qsTr("Copy")
        enabled: root.field.selectedText !== ""
        onTriggered: root.field.copy()
    }
    PopupMenuItem {
        text: qsTr("Paste")
        enabled: root.field.canPaste
        onTriggered: root.field.paste()
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Select All")
        enabled: root.field.length > 0
        onTriggered: root.field.selectAll()
    }
}

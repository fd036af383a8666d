import QtQuick
import Quillo

/// The context menu of a row.
PopupMenu {
    id: root

    required property bool done

    signal toggleRequested
    signal editRequested
    signal deleteRequested

    PopupMenuItem {
        text: root.done ? qsTr("Mark incomplete") : qsTr("Mark complete")
        onTriggered: root.toggleRequested()
    }
    PopupMenuItem {
        text: qsTr("Edit")
        onTriggered: root.editRequested()
    }
    PopupMenuItem {
        text: qsTr("Delete")
        onTriggered: root.deleteRequested()
    }
}

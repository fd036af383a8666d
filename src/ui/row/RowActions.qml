import QtQuick
import Quillo

/// The buttons that a row shows under the pointer or with the keyboard in it.
Row {
    id: root

    required property string title
    /// Whether Tab stops at them.
    required property bool reachable

    signal reminderRequested
    signal deleteRequested
    /// The keyboard goes back, to the row.
    signal wentBack

    /// Puts the keyboard into the last of them.
    function enterFromBehind() {
        deletion.forceActiveFocus();
    }

    spacing: 0

    IconButton {
        symbol: "bell"
        symbolSize: 14
        name: qsTr("Set reminder for %1").arg(root.title)
        activeFocusOnTab: root.reachable
        onClicked: root.reminderRequested()
        Keys.onBacktabPressed: root.wentBack()
    }

    IconButton {
        id: deletion
        symbol: "trash"
        symbolSize: 14
        name: qsTr("Delete %1").arg(root.title)
        activeFocusOnTab: root.reachable
        onClicked: root.deleteRequested()
    }
}

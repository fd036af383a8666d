import QtQuick
import Quillo

/// What can be done besides the tasks themselves.
PopupMenu {
    id: root

    required property PopoverModel model

    PopupMenuItem {
        text: qsTr("Quick Add… (⌃⌥⌘T)")
        onTriggered: root.model.quickAddRequested()
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Export as Markdown…")
        onTriggered: root.model.exportMarkdownRequested()
    }
    PopupMenuItem {
        text: qsTr("Export as JSON…")
        onTriggered: root.model.exportJsonRequested()
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Clear Completed")
        enabled: root.model.doneCount > 0
        onTriggered: root.model.clearCompleted()
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Statistics…")
        enabled: root.model.statisticsEnabled
        visible: enabled
        height: visible ? implicitHeight : 0
        onTriggered: root.model.statisticsRequested()
    }
    PopupMenuItem {
        text: qsTr("Settings…")
        onTriggered: root.model.settingsRequested()
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Check for Updates…")
        onTriggered: root.model.updateCheckRequested()
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Quit Quillo")
        onTriggered: root.model.quitRequested()
    }
}

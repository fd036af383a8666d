import QtQuick
import Quillo

/// What can be done besides the tasks themselves.
PopupMenu {
    id: root

    required property PopoverModel model

    PopupMenuItem {
        text: qsTr("Quick Add… (⌃⌥⌘T)")
        onTriggered: root.model.perform(PopoverModel.QuickAdd)
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Export as Markdown…")
        onTriggered: root.model.perform(PopoverModel.ExportMarkdown)
    }
    PopupMenuItem {
        text: qsTr("Export as JSON…")
        onTriggered: root.model.perform(PopoverModel.ExportJson)
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
        enabled: visible
        visible: root.model.statisticsEnabled
        height: visible ? implicitHeight : 0
        onTriggered: root.model.perform(PopoverModel.OpenStatistics)
    }
    PopupMenuItem {
        text: qsTr("Settings…")
        onTriggered: root.model.perform(PopoverModel.OpenSettings)
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Check for Updates…")
        onTriggered: root.model.perform(PopoverModel.CheckForUpdates)
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Quit Quillo")
        onTriggered: root.model.perform(PopoverModel.Quit)
    }
}

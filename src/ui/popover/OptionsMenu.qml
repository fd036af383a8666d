import QtQuick
import Quillo

/// What can be done besides the tasks themselves.
PopupMenu {
    id: root

    required property PopoverModel model

    PopupMenuItem {
        text: qsTr("Quick Add… (⌃⌥⌘T)")
        enabled: root.model.offers(PopoverModel.QuickAdd)
        onTriggered: root.model.perform(PopoverModel.QuickAdd)
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Export as Markdown…")
        enabled: root.model.offers(PopoverModel.ExportMarkdown)
        onTriggered: root.model.perform(PopoverModel.ExportMarkdown)
    }
    PopupMenuItem {
        text: qsTr("Export as JSON…")
        enabled: root.model.offers(PopoverModel.ExportJson)
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
        enabled: visible && root.model.offers(PopoverModel.OpenStatistics)
        visible: root.model.statisticsEnabled
        height: visible ? implicitHeight : 0
        onTriggered: root.model.perform(PopoverModel.OpenStatistics)
    }
    PopupMenuItem {
        text: qsTr("Settings…")
        enabled: root.model.offers(PopoverModel.OpenSettings)
        onTriggered: root.model.perform(PopoverModel.OpenSettings)
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Check for Updates…")
        enabled: root.model.offers(PopoverModel.CheckForUpdates)
        onTriggered: root.model.perform(PopoverModel.CheckForUpdates)
    }
    PopupMenuSeparator {}
    PopupMenuItem {
        text: qsTr("Quit Quillo")
        enabled: root.model.offers(PopoverModel.Quit)
        onTriggered: root.model.perform(PopoverModel.Quit)
    }
}

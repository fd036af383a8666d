import QtQuick
import Quillo

/// The list itself.
FormSection {
    id: root

    required property SettingsModel model

    heading: qsTr("Data")

    ButtonRow {
        PushButton {
            text: qsTr("Clear Completed Tasks")
            enabled: root.model.anyDone
            onClicked: root.model.clearCompleted()
        }
    }

    ButtonRow {
        PushButton {
            text: qsTr("Export as Markdown…")
            onClicked: root.model.exportMarkdown()
        }

        PushButton {
            text: qsTr("Export as JSON…")
            onClicked: root.model.exportJson()
        }
    }
}

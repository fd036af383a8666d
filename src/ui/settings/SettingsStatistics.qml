import QtQuick
import Quillo

/// Counting completions.
FormSection {
    id: root

    required property SettingsModel model

    signal resetRequested

    heading: qsTr("Statistics")

    ToggleRow {
        text: qsTr("Track completion statistics")
        help: qsTr("Counts completions, streaks, and personal records. Stays on this Mac.")
        checked: root.model.statisticsEnabled
        onToggled: root.model.statisticsEnabled = !root.model.statisticsEnabled
    }

    ButtonRow {
        PushButton {
            text: qsTr("Reset Statistics…")
            destructive: true
            onClicked: root.resetRequested()
        }
    }
}

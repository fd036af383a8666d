import QtQuick
import Quillo

/// New versions.
FormSection {
    id: root

    required property SettingsModel model

    heading: qsTr("Updates")

    ToggleRow {
        text: qsTr("Check for updates automatically")
        help: qsTr("When on, Quillo checks for new versions in the background and asks before installing. Manual checks are always available from the menu.")
        checked: root.model.automaticUpdates
        onToggled: root.model.automaticUpdates = !root.model.automaticUpdates
    }

    ButtonRow {
        PushButton {
            text: qsTr("Check for Updates Now…")
            onClicked: root.model.checkForUpdates()
        }
    }
}

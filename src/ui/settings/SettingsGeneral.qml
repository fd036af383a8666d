import QtQuick
import Quillo

/// Starting, and keeping in step with other computers.
FormSection {
    id: root

    required property SettingsModel model

    signal syncConfigured

    ToggleRow {
        text: qsTr("Launch Quillo at login")
        checked: root.model.launchAtLogin
        onToggled: root.model.launchAtLogin = !root.model.launchAtLogin
    }

    ToggleRow {
        text: qsTr("Sync via iCloud")
        help: qsTr("Keeps your list in sync across your Macs.")
        checked: root.model.cloudSync
        onToggled: root.model.cloudSync = !root.model.cloudSync

        PushButton {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Configure…")
            onClicked: root.syncConfigured()
        }
    }
}

import QtQuick
import Quillo

/// What the settings window shows: a form whose controls act at once.
FocusScope {
    id: root

    required property SettingsModel model

    signal closeRequested

    /// Gives up what is going on in it.
    function end() {
        root.model.recorder.stop();
        confirmation.close();
        sync.close();
    }

    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_Escape || event.matches(StandardKey.Close);
        if (event.accepted)
            root.closeRequested();
    }

    ScrollPage {
        anchors.fill: parent

        SettingsGeneral {
            width: parent.width
            model: root.model
            onSyncConfigured: sync.open()
        }

        SettingsShortcut {
            width: parent.width
            recorder: root.model.recorder
        }

        SettingsData {
            width: parent.width
            model: root.model
        }

        SettingsStatistics {
            width: parent.width
            model: root.model
            onResetRequested: confirmation.open()
        }

        SettingsUpdates {
            width: parent.width
            model: root.model
        }

        SettingsFooter {
            width: parent.width
            model: root.model
        }
    }

    SyncSheet {
        id: sync
        model: root.model.sync
    }

    ConfirmationCard {
        id: confirmation
        title: qsTr("Reset all statistics?")
        message: qsTr("This will permanently erase your completion count, streaks, fastest and slowest records, and earned awards. This can't be undone.")
        action: qsTr("Reset Statistics")
        onConfirmed: root.model.resetStatistics()
    }
}

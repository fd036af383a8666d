import QtQuick
import Quillo

/// The shortcut that works everywhere.
FormSection {
    id: root

    required property HotKeyRecorder recorder

    heading: qsTr("Quick Add Hotkey")
    note: {
        if (recorder.recording)
            return qsTr("Press the new shortcut, or Esc to cancel.");
        if (recorder.configuredElsewhere)
            return qsTr("Click the field to change the shortcut in the settings of your desktop. Press from anywhere to capture a task.");
        return qsTr("Click the field to record a new shortcut. Press from anywhere to capture a task.");
    }

    FormRow {
        id: row
        text: qsTr("Open Quick Add")

        PushButton {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.recorder.restorable
            text: qsTr("Restore Default")
            onClicked: {
                field.forceActiveFocus();
                root.recorder.restoreDefault();
            }
        }

        HotKeyRecorderView {
            id: field
            anchors.verticalCenter: parent.verticalCenter
            name: row.text
            recorder: root.recorder
        }
    }
}

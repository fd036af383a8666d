import QtQuick
import Quillo

/// A row with a line of text to type into.
FormRow {
    id: root

    property alias value: input.text
    property alias placeholder: input.placeholder
    /// What is typed is not shown.
    property bool secret: false

    signal submitted

    onClicked: input.forceActiveFocus()

    Item {
        width: Math.round(root.width * 0.62)
        height: Math.max(30, input.implicitHeight + 12)

        Rectangle {
            anchors.fill: parent
            radius: 6
            color: Theme.window
            border.width: input.activeFocus ? 2 : 1
            border.color: input.activeFocus ? Theme.focusRing : Theme.separator
        }

        EntryInput {
            id: input
            anchors.fill: parent
            anchors.leftMargin: 8
            anchors.rightMargin: 8
            name: root.text
            hint: root.help
            maximumLength: 1024
            echoMode: root.secret ? TextInput.Password : TextInput.Normal
            inputMethodHints: root.secret ? Qt.ImhHiddenText | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase | Qt.ImhSensitiveData : Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
            onSubmitted: root.submitted()
        }
    }
}

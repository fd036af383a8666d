import QtQuick
import Quillo

/// A row that is switched on and off, by a click anywhere in it.
FormRow {
    id: root

    required property bool checked

    signal toggled

    onClicked: root.toggled()

    Toggle {
        anchors.verticalCenter: parent.verticalCenter
        name: root.text
        hint: root.help
        checked: root.checked
        onClicked: root.toggled()
    }
}

import QtQuick
import Quillo

/// One of several rows of which one is chosen: by a click anywhere in it, or by the arrow keys from the one before or
/// behind it, which are the only way there for the keyboard, as everywhere.
FormRow {
    id: root

    required property bool checked

    signal chosen
    /// An arrow key asks for the row so many further on.
    signal stepped(int by)

    function takeFocus() {
        circle.forceActiveFocus();
    }

    onClicked: root.chosen()

    Pressable {
        id: circle
        width: 18
        height: 18
        cornerRadius: 9
        ringGap: 1
        name: root.text
        hint: root.help
        activeFocusOnTab: root.checked
        onClicked: root.chosen()

        Accessible.role: Accessible.RadioButton
        Accessible.checkable: true
        Accessible.checked: root.checked

        Keys.onUpPressed: root.stepped(-1)
        Keys.onDownPressed: root.stepped(1)
        Keys.onLeftPressed: root.stepped(LayoutMirroring.enabled ? 1 : -1)
        Keys.onRightPressed: root.stepped(LayoutMirroring.enabled ? -1 : 1)

        Rectangle {
            anchors.fill: parent
            radius: width / 2
            antialiasing: true
            color: root.checked ? Theme.accent : Theme.field
            border.width: 1
            border.color: root.checked ? "transparent" : Theme.faint

            Rectangle {
                anchors.centerIn: parent
                width: 8
                height: 8
                radius: 4
                antialiasing: true
                visible: root.checked
                color: Theme.accentSymbol
            }

            Rectangle {
                anchors.fill: parent
                radius: width / 2
                color: circle.pressed ? Theme.pressed : Theme.hover
                visible: circle.hovered || circle.pressed
            }
        }
    }
}

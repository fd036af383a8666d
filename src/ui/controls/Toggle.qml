import QtQuick
import Quillo

/// A switch that is on or off. Whoever uses it decides what a click makes of `checked`.
Pressable {
    id: root

    required property bool checked

    implicitWidth: 36
    implicitHeight: 20
    cornerRadius: height / 2
    ringGap: 1
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: root.clicked()

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        antialiasing: true
        color: root.checked ? Theme.accent : Theme.pressed
        border.width: 1
        border.color: root.checked ? "transparent" : Theme.faint

        Rectangle {
            anchors.fill: parent
            radius: root.cornerRadius
            color: root.pressed ? Theme.pressed : Theme.hover
            visible: root.hovered || root.pressed
        }
    }

    Rectangle {
        // Not by anchors, which would leave nothing to animate.
        readonly property bool atEnd: root.checked !== root.LayoutMirroring.enabled

        x: atEnd ? root.width - width - 3 : 3
        anchors.verticalCenter: parent.verticalCenter
        width: 14
        height: 14
        radius: 7
        antialiasing: true
        color: root.checked ? Theme.accentSymbol : Theme.secondary

        Behavior on x {
            enabled: !Theme.reduceMotion
            NumberAnimation {
                duration: 120
                easing.type: Easing.OutCubic
            }
        }
    }
}

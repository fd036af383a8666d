import QtQuick
import Quillo

/// The round checkbox of a task.
Item {
    id: root

    required property string name
    required property bool checked
    /// Whether a change of `checked` is shown as a motion.
    property bool animated: true

    signal clicked

    implicitWidth: 18
    implicitHeight: 18

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: root.clicked()
    Accessible.onToggleAction: root.clicked()

    /// How much of the tick is there: 0 to 1, beyond it for a moment while it springs.
    property real tick: checked ? 1 : 0

    Behavior on tick {
        enabled: root.animated && !Theme.reduceMotion
        TickSpring {}
    }

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        antialiasing: true
        color: "transparent"
        border.width: 1.5
        border.pixelAligned: false
        border.color: root.checked ? Theme.doneGreen : Theme.faint
    }

    Loader {
        anchors.fill: parent
        active: root.tick > 0.01
        sourceComponent: Rectangle {
            radius: width / 2
            antialiasing: true
            color: Theme.doneGreen
            // The spring swings past its end on either side; nothing can be drawn at less than no size.
            scale: Math.max(0, root.tick)

            Icon {
                anchors.centerIn: parent
                symbol: "checkmark"
                size: 10
                color: Theme.onDone
            }
        }
    }

    MouseArea {
        anchors.fill: parent
        anchors.margins: -8
        onClicked: root.clicked()
    }
}

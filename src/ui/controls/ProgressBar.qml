import QtQuick
import Quillo

/// How far something has come; or only that it goes on, where nobody knows how far.
Item {
    id: root

    property string name
    /// How far it has come, in words: Qt 6.4 tells assistive programs no numbers of it.
    property string description
    property bool indeterminate: false
    /// From 0 to 1.
    property real value: 0
    /// Whether it moves on to another value.
    property bool animated: false

    implicitHeight: 6

    Accessible.role: Accessible.ProgressBar
    Accessible.name: name
    Accessible.description: description

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.pressed
        border.width: Theme.highContrast ? 1 : 0
        border.color: Theme.text
        clip: true

        Rectangle {
            id: bar

            property real place: 0.5

            readonly property real from: root.indeterminate ? (root.width + width) * place - width : 0

            x: root.LayoutMirroring.enabled ? root.width - width - from : from
            width: root.width * (root.indeterminate ? 0.3 : root.value)
            height: parent.height
            radius: height / 2
            color: Theme.accent

            Behavior on width {
                enabled: root.animated && !Theme.reduceMotion
                NumberAnimation {
                    duration: 300
                    easing.type: Easing.OutCubic
                }
            }

            NumberAnimation on place {
                running: root.indeterminate && root.visible && !Theme.reduceMotion
                from: 0
                to: 1
                duration: 1400
                loops: Animation.Infinite
            }
        }
    }
}

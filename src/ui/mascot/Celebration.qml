pragma ComponentBehavior: Bound

import QtQuick
import Quillo

/// Confetti that bursts from the middle, once, when made.
Item {
    id: root

    signal finished

    readonly property var colours: [Theme.doneGreen, Theme.todayOrange, Theme.overdueRed, Theme.accent]
    /// 0 to 1: how far it has flown.
    property real flight: 0

    Repeater {
        model: 14

        Rectangle {
            required property int index

            readonly property real angle: 2 * Math.PI * index / 14
            readonly property real reach: root.width * (index % 2 ? 0.8 : 0.62) * root.flight

            x: root.width / 2 + reach * Math.sin(angle) - width / 2
            y: root.height / 2 - reach * Math.cos(angle) + root.height * 0.15 * root.flight * root.flight - height / 2
            width: Math.max(3, root.width * (index % 3 ? 0.05 : 0.075))
            height: index % 2 ? width : width * 0.6
            radius: index % 2 ? width / 2 : 1
            rotation: angle * 180 / Math.PI + 180 * root.flight
            opacity: Math.min(1, 5 * (1 - root.flight))
            antialiasing: true
            color: root.colours[index % 4]
        }
    }

    NumberAnimation on flight {
        from: 0
        to: 1
        duration: 1100
        easing.type: Easing.OutQuad
        onFinished: root.finished()
    }
}

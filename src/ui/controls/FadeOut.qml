import QtQuick
import Quillo

/// How popups go, from wherever they have come to.
Transition {
    id: root

    property int duration: 90

    NumberAnimation {
        property: "opacity"
        to: 0
        duration: Theme.reduceMotion ? 0 : root.duration
    }
}

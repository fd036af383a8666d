import QtQuick
import Quillo

/// How popups come. They do not ask whether a transition is enabled, so motion is left out here.
Transition {
    id: root

    property int duration: 90

    NumberAnimation {
        property: "opacity"
        from: 0
        to: 1
        duration: Theme.reduceMotion ? 0 : root.duration
    }
}

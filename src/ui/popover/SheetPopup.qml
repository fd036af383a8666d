import QtQuick
import QtQuick.Templates as T
import Quillo

/// A sheet as large as what it covers. Escape closes it.
T.Popup {
    id: root

    required property real cornerRadius

    width: parent?.width ?? 0
    height: parent?.height ?? 0
    padding: 24
    modal: true
    dim: false
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    T.Overlay.modal: Item {}

    readonly property FocusKeeper keyboard: FocusKeeper {
        within: root.parent
    }

    onAboutToShow: keyboard.keep()
    onClosed: keyboard.giveBack()

    background: Rectangle {
        radius: root.cornerRadius
        color: Theme.window
        border.width: 1
        border.color: Theme.separator
    }

    // Popups do not ask whether a transition is enabled.
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.reduceMotion ? 0 : 150
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: Theme.reduceMotion ? 0 : 120
        }
    }
}

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

    enter: FadeIn {
        duration: 150
    }
    exit: FadeOut {
        duration: 120
    }
}

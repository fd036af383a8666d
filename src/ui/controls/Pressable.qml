import QtQuick
import Quillo

/// Base of everything that is pressed: with the pointer, with Space or Return, or by an assistive technology.
Item {
    id: root

    required property string name
    property string hint
    property real cornerRadius: 6
    /// Between it and its focus ring.
    property real ringGap: 0
    readonly property bool hovered: area.containsMouse
    readonly property bool pressed: area.containsPress

    signal clicked

    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.description: hint
    Accessible.focusable: true
    Accessible.onPressAction: root.clicked()

    Keys.onPressed: event => {
        const presses = [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter].includes(event.key);
        event.accepted = presses;
        if (presses && !event.isAutoRepeat)
            root.clicked();
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.clicked()
    }

    FocusRing {
        gap: root.ringGap
        cornerRadius: root.cornerRadius
    }
}

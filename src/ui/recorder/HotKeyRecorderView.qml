import QtQuick
import Quillo

/// Shows the shortcut and, after a click, takes the next key combination as the new one.
Item {
    id: root

    required property HotKeyRecorder recorder
    required property string name

    readonly property string shown: recorder.recording ? qsTr("Press shortcut…") : recorder.shortcut

    implicitWidth: Math.max(140, label.implicitWidth + 24)
    implicitHeight: Math.max(28, label.implicitHeight + 12)
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.description: shown
    Accessible.focusable: true
    Accessible.onPressAction: root.press()

    // Whoever goes elsewhere, to another window perhaps, needs the shortcut there.
    onActiveFocusChanged: {
        if (!activeFocus)
            recorder.stop();
    }

    Keys.onPressed: event => {
        if (recorder.recording) {
            event.accepted = true;
            if (!event.isAutoRepeat)
                recorder.handleKey(event.key, event.nativeScanCode, event.modifiers);
            return;
        }
        event.accepted = [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter].includes(event.key);
        if (event.accepted && !event.isAutoRepeat)
            press();
    }

    function press() {
        forceActiveFocus();
        recorder.press();
    }

    function ground(alpha) {
        return Theme.dark ? Qt.rgba(1, 1, 1, alpha) : Qt.rgba(0, 0, 0, alpha);
    }

    function accent(alpha) {
        return Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b, alpha);
    }

    Rectangle {
        anchors.fill: parent
        radius: 6
        antialiasing: true
        color: root.recorder.recording ? root.accent(0.18) : root.ground(area.containsMouse ? 0.08 : 0.04)
        border.width: 1
        border.color: root.recorder.recording ? root.accent(0.55) : Theme.highContrast ? Theme.separator : root.ground(0.1)
    }

    Text {
        id: label
        anchors.centerIn: parent
        text: root.shown
        textFormat: Text.PlainText
        font.pixelSize: Math.round(Theme.fontSize * 12 / 13)
        color: root.recorder.recording ? Theme.accentLabel : Theme.text
        Accessible.ignored: true
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        onPressed: root.press()
    }

    FocusRing {}
}

import QtQuick
import Quillo

/// Olo the frog. He breathes and blinks while somebody is there, hops when tapped, and has a secret.
Pressable {
    id: root

    enum HopPhase {
        Rest,
        Crouch,
        Airborne
    }

    /// Edge of the square that he is drawn in.
    required property real size
    /// Where the pictures are. Without that of a state, the one at rest is shown.
    property url folder: Qt.resolvedUrl("mascot")

    signal secretTap

    property int hopPhase: MascotView.Rest
    property real hopOffset: 0
    property bool blinking: false
    property bool celebrating: false
    readonly property bool breathing: input.recent && visible && !Theme.reduceMotion

    /// The idle motions: 0 to 1, and -1 to 1.
    property real breath: 0
    property real tilt: 0

    name: qsTr("Olo, the Quillo mascot")
    hint: qsTr("Tap five times for a surprise.")
    implicitWidth: size
    implicitHeight: size

    onClicked: {
        hop();
        if (taps.tap()) {
            celebrate();
            secretTap();
        }
    }
    onVisibleChanged: {
        if (!visible)
            rest();
    }
    onBreathingChanged: {
        blinking = false;
        if (!breathing)
            settle.start();
    }

    function hop() {
        if (Theme.reduceMotion)
            return;
        sequence.inTheAir = sequence.running ? 140 : 220;
        sequence.restart();
    }

    function celebrate() {
        celebrating = !Theme.reduceMotion;
    }

    function rest() {
        sequence.stop();
        celebrating = false;
        enter(MascotView.Rest);
    }

    function enter(phase) {
        hopPhase = phase;
        hopOffset = size * (phase === MascotView.Airborne ? -0.22 : phase === MascotView.Crouch ? 0.04 : 0);
    }

    SecretTaps {
        id: taps
    }

    RecentInput {
        id: input
        window: root.Window.window
    }

    Connections {
        target: Theme
        function onChanged() {
            if (Theme.reduceMotion)
                root.rest();
        }
    }

    // The hop. One that begins before the last has ended stays in the air for less long.
    SequentialAnimation {
        id: sequence

        property int inTheAir: 220

        ScriptAction {
            script: root.enter(MascotView.Airborne)
        }
        PauseAnimation {
            duration: sequence.inTheAir
        }
        ScriptAction {
            script: root.enter(MascotView.Crouch)
        }
        PauseAnimation {
            duration: 180
        }
        ScriptAction {
            script: root.enter(MascotView.Rest)
        }
    }

    Behavior on hopOffset {
        enabled: !Theme.reduceMotion && root.visible
        Spring {
            response: root.hopPhase === MascotView.Airborne ? 0.32 : root.hopPhase === MascotView.Crouch ? 0.28 : 0.3
            dampingFraction: root.hopPhase === MascotView.Airborne ? 0.65 : root.hopPhase === MascotView.Crouch ? 0.75 : 0.55
        }
    }

    // The idle motions.
    SequentialAnimation on breath {
        running: root.breathing
        loops: Animation.Infinite
        NumberAnimation {
            to: 1
            duration: 2400
            easing.type: Easing.InOutQuad
        }
        NumberAnimation {
            to: 0
            duration: 2400
            easing.type: Easing.InOutQuad
        }
    }
    SequentialAnimation on tilt {
        running: root.breathing
        loops: Animation.Infinite
        NumberAnimation {
            to: 1
            duration: 1600
            easing.type: Easing.InOutQuad
        }
        NumberAnimation {
            to: -1
            duration: 1600
            easing.type: Easing.InOutQuad
        }
    }
    NumberAnimation {
        id: settle
        target: root
        properties: "breath,tilt"
        to: 0
        duration: Theme.reduceMotion ? 0 : 600
    }

    Timer {
        property real pause: 4000 + 4000 * Math.random()

        running: root.breathing
        repeat: true
        interval: root.blinking ? 120 : pause
        onTriggered: {
            if (root.blinking)
                pause = 4000 + 4000 * Math.random();
            root.blinking = !root.blinking;
        }
    }

    Item {
        width: root.size
        height: root.size
        anchors.centerIn: parent
        anchors.verticalCenterOffset: root.hopOffset

        // Steps too small to be seen save most of the frames.
        transform: [
            Scale {
                origin.x: root.size / 2
                origin.y: root.size * 0.94
                yScale: 1 + 0.03 * Math.round(root.breath * 16) / 16
                xScale: 1 - 0.01 * Math.round(root.breath * 16) / 16
            },
            Rotation {
                origin.x: root.size / 2
                origin.y: root.size * 0.94
                angle: 1.5 * Math.round(root.tilt * 12) / 12
            }
        ]

        MascotFrame {
            id: blink
            size: root.size
            picture: root.folder + "/Olo-Blink.svg"
            wanted: root.blinking && root.hopPhase === MascotView.Rest
        }
        MascotFrame {
            id: crouch
            size: root.size
            picture: root.folder + "/Olo-Crouch.svg"
            wanted: root.hopPhase === MascotView.Crouch
        }
        MascotFrame {
            id: airborne
            size: root.size
            picture: root.folder + "/Olo-Airborne.svg"
            wanted: root.hopPhase === MascotView.Airborne
        }
        MascotFrame {
            size: root.size
            picture: root.folder + "/Olo.svg"
            wanted: true
            visible: shown && !blink.shown && !crouch.shown && !airborne.shown
        }
    }

    Loader {
        anchors.fill: parent
        z: -1
        active: root.celebrating
        sourceComponent: Celebration {
            onFinished: root.celebrating = false
        }
    }
}

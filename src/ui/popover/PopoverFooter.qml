import QtQuick
import Quillo

/// The popover's lower strip: how to add a task from anywhere.
Item {
    id: root

    required property real cornerRadius

    implicitHeight: 32

    BarStrip {
        anchors.fill: parent
        cornerRadius: root.cornerRadius
        atTop: false
    }

    Row {
        anchors.centerIn: parent
        spacing: 6
        // Large letters and long words are made to fit.
        scale: Math.min(1, (root.width - 24) / Math.max(1, implicitWidth))

        FooterText {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Press")
        }
        KbdHint {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("⌃⌥⌘T")
        }
        FooterText {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("from anywhere to add.")
        }
    }

    component FooterText: Text {
        textFormat: Text.PlainText
        font.pixelSize: Theme.captionSize
        color: Theme.secondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}

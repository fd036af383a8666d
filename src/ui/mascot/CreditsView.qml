import QtQuick
import Quillo

/// What is behind the mascot's secret.
FocusScope {
    id: root

    signal close

    Accessible.role: Accessible.Dialog
    Accessible.name: greeting.text

    onVisibleChanged: {
        if (visible)
            mascot.celebrate();
    }

    Column {
        anchors.centerIn: parent
        width: Math.max(0, parent.width - 48)
        spacing: 12

        MascotView {
            id: mascot
            anchors.horizontalCenter: parent.horizontalCenter
            size: 144
        }

        Text {
            id: greeting
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: qsTr("Hi, I’m Olo. You found me!")
            textFormat: Text.PlainText
            font.pixelSize: Theme.titleSize
            font.weight: Font.Bold
            color: Theme.text
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: qsTr("Thanks for using Quillo.\nMade with care for the menu bar power user.")
            textFormat: Text.PlainText
            lineHeight: 1.25
            font.pixelSize: Theme.fontSize
            color: Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Item {
            width: 1
            height: 4
        }

        PushButton {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Back to work")
            prominent: true
            focus: true
            onClicked: root.close()
        }
    }
}

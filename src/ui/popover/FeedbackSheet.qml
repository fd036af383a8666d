import QtQuick
import Quillo

/// Asks how the program does.
SheetPopup {
    id: root

    contentItem: FocusScope {
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: title.text

        Column {
            anchors.centerIn: parent
            width: parent.width
            spacing: 16

            MascotView {
                anchors.horizontalCenter: parent.horizontalCenter
                size: 72
                Accessible.ignored: true
            }

            Text {
                id: title
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: qsTr("Quillo")
                font.pixelSize: Theme.titleSize
                font.weight: Font.Bold
                color: Theme.text
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            PushButton {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Close")
                prominent: true
                focus: true
                onClicked: root.close()
            }
        }
    }
}

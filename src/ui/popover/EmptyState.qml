import QtQuick
import Quillo

/// Shown while there is nothing to do.
Item {
    id: root

    /// Room for the done tasks below it is wanted.
    required property bool small

    signal secretTap

    implicitHeight: column.implicitHeight + 32

    Column {
        id: column
        anchors.centerIn: parent
        spacing: root.small ? 4 : 12

        MascotView {
            anchors.horizontalCenter: parent.horizontalCenter
            size: root.small ? 48 : 112
            onSecretTap: root.secretTap()
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("All clear.")
            textFormat: Text.PlainText
            font.pixelSize: root.small ? Theme.fontSize : Theme.titleSize
            font.weight: Font.DemiBold
            color: Theme.secondary
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}

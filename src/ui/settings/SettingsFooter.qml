import QtQuick
import Quillo

/// What this program is, and where its makers are found.
Column {
    id: root

    required property SettingsModel model

    spacing: 4

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: qsTr("Quillo")
        font.pixelSize: Theme.titleSize
        font.weight: Font.Bold
        color: Theme.text
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        visible: text !== ""
        text: root.model.version
        textFormat: Text.PlainText
        font.pixelSize: Theme.captionSize
        color: Theme.faintText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Text {
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        text: qsTr("Tiny, fast todo list that lives in your menu bar.")
        font.pixelSize: Theme.captionSize
        color: Theme.secondary
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 12

        LinkButton {
            text: qsTr("Visit website")
            Accessible.role: Accessible.Link
            onClicked: root.model.visitWebsite()
        }

        LinkButton {
            text: qsTr("Contact support")
            Accessible.role: Accessible.Link
            onClicked: root.model.contactSupport()
        }
    }
}

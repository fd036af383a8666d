import QtQuick
import Quillo

/// Asks how the program does.
SheetPopup {
    id: root

    required property Feedback feedback

    contentItem: FocusScope {
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: title.text

        Column {
            anchors.centerIn: parent
            width: parent.width
            spacing: 12

            MascotView {
                anchors.horizontalCenter: parent.horizontalCenter
                size: 72
                activeFocusOnTab: false
                Accessible.ignored: true
            }

            Text {
                id: title
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                text: qsTr("How is Quillo working for you?")
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
                text: qsTr("If you have a moment, your feedback helps a lot.")
                textFormat: Text.PlainText
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
                width: parent.width
                symbol: "envelope"
                text: qsTr("Send feedback by email")
                large: true
                prominent: true
                focus: true
                onClicked: {
                    root.feedback.writeMail();
                    root.close();
                }
            }

            PushButton {
                width: parent.width
                symbol: "star"
                text: qsTr("Leave a public review")
                large: true
                onClicked: {
                    root.feedback.writeReview();
                    root.close();
                }
            }

            LinkButton {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Maybe later")
                onClicked: root.close()
            }
        }
    }
}

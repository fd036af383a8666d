import QtQuick
import QtQuick.Templates as T
import Quillo

/// Asks whether something that cannot be undone is really wanted. Escape, and a press beside it, mean no.
PopupCard {
    id: root

    required property string title
    required property string message
    /// What the button says that does it.
    required property string action

    signal confirmed

    x: Math.round(((parent?.width ?? 0) - width) / 2)
    y: Math.round(((parent?.height ?? 0) - height) / 2)
    width: Math.min(340, (parent?.width ?? 0) - 2 * 20)
    padding: 20
    dim: true

    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, Theme.dark ? 0.45 : 0.25)
    }

    onAboutToShow: cancel.focus = true

    contentItem: FocusScope {
        implicitHeight: column.implicitHeight
        focus: true
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.title
        Accessible.description: root.message

        Column {
            id: column
            width: parent.width
            spacing: 8

            Text {
                width: parent.width
                text: root.title
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignLeft
                wrapMode: Text.Wrap
                font.pixelSize: Theme.fontSize
                font.weight: Font.Bold
                color: Theme.text
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }

            Text {
                width: parent.width
                text: root.message
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignLeft
                wrapMode: Text.Wrap
                font.pixelSize: Theme.fontSize
                color: Theme.secondary
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            // A line of its own, with some room above it.
            Item {
                width: parent.width
                height: buttons.implicitHeight + 8

                Flow {
                    id: buttons
                    anchors.bottom: parent.bottom
                    width: parent.width
                    spacing: 8
                    layoutDirection: Qt.RightToLeft

                    PushButton {
                        text: root.action
                        destructive: true
                        onClicked: {
                            root.close();
                            root.confirmed();
                        }
                    }

                    PushButton {
                        id: cancel
                        text: qsTr("Cancel")
                        focus: true
                        onClicked: root.close()
                    }
                }
            }
        }
    }
}

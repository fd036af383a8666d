import QtQuick
import Quillo

/// What is new in a release: scrolled with the wheel, the handle and the keys where it is long.
Rectangle {
    id: root

    required property string text

    implicitHeight: Math.min(180, label.height + 20)
    radius: 6
    color: Theme.field
    border.width: 1
    border.color: Theme.separator
    activeFocusOnTab: true

    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("What is new")
    Accessible.description: text
    Accessible.focusable: true

    onTextChanged: list.contentY = 0
    onVisibleChanged: list.contentY = 0

    readonly property ScrollKeys keys: ScrollKeys {
        flickable: list
    }

    Keys.onPressed: event => keys.scroll(event)

    Flickable {
        id: list
        anchors.fill: parent
        anchors.margins: 1
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: label.height + 18

        Text {
            id: label
            x: 12
            y: 9
            width: list.width - 24
            wrapMode: Text.Wrap
            text: root.text
            textFormat: Text.PlainText
            font.pixelSize: Theme.fontSize
            lineHeight: 1.15
            color: Theme.text
            Accessible.ignored: true
        }
    }

    ScrollHandle {
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        anchors.margins: 2
        flickable: list
    }

    FocusRing {}
}

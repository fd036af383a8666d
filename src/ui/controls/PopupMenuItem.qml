import QtQuick
import QtQuick.Templates as T
import Quillo

/// A line of a menu.
T.MenuItem {
    id: root

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(28, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: 12
    rightPadding: 12
    topPadding: 4
    bottomPadding: 4
    hoverEnabled: true

    // Which closes the menu too; click() by itself is no choice.
    Accessible.onPressAction: root.triggered()

    background: Rectangle {
        radius: 4
        color: Theme.accent
        visible: root.highlighted
    }

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        font.pixelSize: Theme.fontSize
        color: root.highlighted ? Theme.accentText : Theme.text
        opacity: root.enabled ? 1 : 0.5
    }
}

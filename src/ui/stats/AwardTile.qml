import QtQuick
import Quillo

/// An award: in full where it is earned, dimmed where it is not, with a sparkle where it is new.
StatCard {
    id: root

    required property var award

    implicitHeight: Math.max(46, texts.implicitHeight + 14)
    color: award.earned ? Theme.field : "transparent"
    Accessible.role: Accessible.ListItem
    Accessible.name: award.title + ", " + award.subtitle
    Accessible.description: award.sparkles ? qsTr("New") : award.earned ? qsTr("Earned") : qsTr("Not earned yet")

    Rectangle {
        id: badge
        anchors.left: parent.left
        anchors.leftMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        width: 30
        height: 30
        radius: 15
        color: root.award.earned ? Theme.accent : Theme.hover

        Icon {
            anchors.centerIn: parent
            symbol: root.award.symbol
            size: 16
            color: root.award.earned ? Theme.accentSymbol : Theme.faint
        }
    }

    Column {
        id: texts
        anchors.left: badge.right
        anchors.leftMargin: 9
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: root.award.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            font.pixelSize: Theme.fontSize
            font.weight: Font.DemiBold
            color: root.award.earned ? Theme.text : Theme.faintText
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignLeft
            text: root.award.subtitle
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            font.pixelSize: Theme.captionSize
            color: root.award.earned ? Theme.secondary : Theme.faintText
            Accessible.ignored: true
        }
    }

    Loader {
        anchors.centerIn: badge
        active: root.award.sparkles
        sourceComponent: Sparkle {}
    }
}

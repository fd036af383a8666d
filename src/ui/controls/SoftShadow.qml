import QtQuick

/// The shadow around something with round corners that fills it: thin rings, each fainter than the one within. Image
/// formats would have to be scaled with the screen, and effects need a graphics card.
Item {
    id: root

    required property real cornerRadius
    /// How far it reaches beyond this item, which has nothing of it beneath.
    required property int reach
    property real strength: 0.26

    Repeater {
        model: root.reach

        Rectangle {
            required property int index
            readonly property real nearness: 1 - index / root.reach

            anchors.fill: parent
            anchors.margins: -index - 1
            radius: root.cornerRadius + index + 1
            color: "transparent"
            border.width: 1
            border.color: Qt.rgba(0, 0, 0, root.strength * Math.pow(nearness, 2.4))
        }
    }
}

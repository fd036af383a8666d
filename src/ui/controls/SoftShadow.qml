import QtQuick
import Quillo

/// The shadow around something with round corners that fills it. Image formats would have to be scaled with the screen, and
/// effects need a graphics card.
Item {
    id: root

    required property real cornerRadius
    /// How far it reaches beyond this item, which has nothing of it beneath.
    required property int reach
    property real strength: 0.26

    ShadowPicture {
        anchors.fill: parent
        anchors.margins: -root.reach
        cornerRadius: root.cornerRadius
        reach: root.reach
        strength: root.strength
    }
}

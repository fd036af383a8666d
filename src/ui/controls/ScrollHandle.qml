import QtQuick
import Quillo

/// Shows where a list stands, and is dragged to go elsewhere. Sits along the list's trailing edge.
Item {
    id: root

    required property Flickable flickable

    readonly property real share: flickable.visibleArea.heightRatio
    readonly property real handleHeight: Math.max(24, height * share)
    readonly property real way: height - handleHeight
    readonly property real travelled: share < 1 ? flickable.visibleArea.yPosition / (1 - share) : 0

    width: 10
    visible: share < 1

    Rectangle {
        x: root.mirrored ? 2 : root.width - width - 2
        y: root.way * Math.max(0, Math.min(1, root.travelled))
        width: area.containsMouse || area.pressed ? 6 : 4
        height: root.handleHeight
        radius: width / 2
        color: Theme.secondary
        opacity: area.pressed ? 0.8 : 0.4
    }

    readonly property bool mirrored: LayoutMirroring.enabled

    MouseArea {
        id: area

        property real grip: 0

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onPressed: mouse => {
            const top = root.way * root.travelled;
            grip = mouse.y >= top && mouse.y < top + root.handleHeight ? mouse.y - top : root.handleHeight / 2;
            follow(mouse.y);
        }
        onPositionChanged: mouse => {
            if (pressed)
                follow(mouse.y);
        }

        function follow(pointer) {
            const part = Math.max(0, Math.min(1, (pointer - grip) / root.way));
            const list = root.flickable;
            list.contentY = list.originY + part * (list.contentHeight - list.height);
        }
    }
}

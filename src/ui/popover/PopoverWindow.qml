import QtQuick
import Quillo

/// The popover's window. Where the desktop composes its windows it has round corners and a shadow, for which it is
/// larger than what it shows; elsewhere it is square, with a line around it.
Window {
    id: root

    required property PopoverModel model
    property bool translucent: false

    /// How far the shadow reaches beyond the popover, on each side.
    readonly property int shadowWidth: translucent ? 16 : 0

    width: 360 + 2 * shadowWidth
    height: 480 + 2 * shadowWidth
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    visible: false
    color: "transparent"
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    title: qsTr("Quillo")

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    onVisibleChanged: {
        if (visible)
            view.begin();
        else
            view.end();
    }

    MouseArea {
        anchors.fill: parent
        enabled: root.translucent
        acceptedButtons: Qt.AllButtons
        onPressed: root.model.closeRequested()
    }

    Loader {
        anchors.fill: view
        active: root.translucent
        sourceComponent: SoftShadow {
            cornerRadius: view.cornerRadius
            reach: root.shadowWidth
            strength: 0.18
        }
    }

    PopoverView {
        id: view
        anchors.fill: parent
        anchors.margins: root.shadowWidth
        focus: true
        model: root.model
        cornerRadius: root.translucent ? 12 : 0
    }
}

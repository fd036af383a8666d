import QtQuick
import Quillo

/// The quick-add panel's window. Where windows can be seen through it is larger than the panel by its shadow.
Window {
    id: root

    required property QuickAddModel model
    readonly property int shadowWidth: Theme.reduceTransparency ? 0 : 20

    width: 600 + 2 * shadowWidth
    height: 72 + 2 * shadowWidth
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    visible: false
    color: "transparent"
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    title: qsTr("New task")

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    Connections {
        target: root.model

        function onBegun() {
            content.active = false;
            content.active = true;
        }
    }

    SoftShadow {
        anchors.fill: content
        visible: root.shadowWidth > 0
        cornerRadius: 16
        reach: root.shadowWidth
    }

    MouseArea {
        anchors.fill: parent
        onPressed: root.model.cancel()
    }

    MouseArea {
        anchors.fill: content
        onPressed: root.model.move()
    }

    Loader {
        id: content
        anchors.fill: parent
        anchors.margins: root.shadowWidth
        active: false
        focus: true
        sourceComponent: QuickAddView {
            model: root.model
            floating: root.shadowWidth > 0
        }
    }
}

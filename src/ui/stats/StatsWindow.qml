import QtQuick
import Quillo

/// The statistics window.
Window {
    id: root

    required property StatsModel model

    width: 460
    height: 620
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    visible: false
    color: Theme.window
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowSystemMenuHint | Qt.WindowCloseButtonHint
    title: qsTr("Quillo Statistics")

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    onVisibleChanged: model.active = visible

    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        onActivated: root.close()
    }

    StatsView {
        anchors.fill: parent
        focus: true
        model: root.model
    }
}

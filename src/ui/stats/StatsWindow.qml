import QtQuick
import Quillo

/// The statistics window.
DialogWindow {
    id: root

    required property StatsModel model

    contentWidth: 460
    contentHeight: 620
    title: qsTr("Quillo Statistics")

    onVisibleChanged: model.active = visible

    Shortcut {
        sequences: ["Escape", StandardKey.Close]
        onActivated: root.close()
    }

    StatsView {
        anchors.fill: parent
        focus: true
        model: root.model
    }
}

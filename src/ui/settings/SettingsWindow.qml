import QtQuick
import Quillo

/// The settings window.
DialogWindow {
    id: root

    required property SettingsModel model

    contentWidth: 480
    contentHeight: 580
    title: qsTr("Quillo Settings")

    onVisibleChanged: {
        if (visible)
            model.refresh();
        else
            view.end();
    }

    SettingsView {
        id: view
        anchors.fill: parent
        focus: true
        model: root.model
        onCloseRequested: root.close()
    }
}

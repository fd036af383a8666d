import QtQuick
import Quillo

/// The settings window.
Window {
    id: root

    required property SettingsModel model

    width: 480
    height: 580
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    visible: false
    color: Theme.window
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    title: qsTr("Quillo Settings")

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

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

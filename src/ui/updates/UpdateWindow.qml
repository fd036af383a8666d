import QtQuick
import Quillo

/// Looks for a newer version with the user: a heading, what is to be seen at this step, and what can be done.
Window {
    id: root

    required property UpdateModel model

    readonly property int stage: model.stage
    readonly property int wantedHeight: Math.ceil(content.implicitHeight) + 40

    width: 480
    minimumWidth: width
    maximumWidth: width
    // These alone, which make it as high: a window manager that hears of the height first holds it to the old limits.
    minimumHeight: wantedHeight
    maximumHeight: wantedHeight
    visible: false
    color: Theme.window
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowSystemMenuHint | Qt.WindowCloseButtonHint
    title: qsTr("Software Update")

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    onClosing: model.dismiss()
    onStageChanged: content.takeKeyboard()

    Shortcut {
        sequences: ["Escape", StandardKey.Close]
        onActivated: root.model.dismiss()
    }

    UpdateView {
        id: content
        anchors.fill: parent
        anchors.margins: 20
        focus: true
        model: root.model
    }
}

import QtQuick
import Quillo

/// Looks for a newer version with the user: a heading, what is to be seen at this step, and what can be done.
DialogWindow {
    id: root

    required property UpdateModel model

    readonly property int stage: model.stage

    contentWidth: 480
    contentHeight: Math.ceil(content.implicitHeight) + 40
    title: qsTr("Software Update")

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

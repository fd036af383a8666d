import QtQuick
import Quillo

/// What the sheet about keeping the list in step shows.
FocusScope {
    id: root

    required property SyncModel model

    signal closeRequested

    focus: true
    Accessible.role: Accessible.Dialog
    Accessible.name: qsTr("Sync")

    ScrollPage {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: buttons.top
        margin: 16
        spacing: 16

        SyncPlaceForm {
            id: form
            width: parent.width
            model: root.model
            onSubmitted: root.use()
        }

        SyncAnswer {
            width: parent.width
            model: root.model
        }

        SyncState {
            width: parent.width
            model: root.model
        }

        EarlierLists {
            width: parent.width
            model: root.model
        }
    }

    function use() {
        if (!root.model.busy)
            root.model.use(form.place, form.where, form.user, form.password);
    }

    Connections {
        target: root.model
        function onUsed() {
            form.password = "";
        }
    }

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: buttons.top
        height: 1
        color: Theme.separator
    }

    Flow {
        id: buttons
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        padding: 12
        spacing: 8
        layoutDirection: Qt.RightToLeft

        PushButton {
            text: form.isUsed ? qsTr("Done") : qsTr("Use This Place")
            prominent: true
            enabled: !root.model.busy && (form.isUsed || form.isComplete)
            onClicked: form.isUsed ? root.closeRequested() : root.use()
        }

        PushButton {
            text: qsTr("Cancel")
            visible: !form.isUsed
            onClicked: root.closeRequested()
        }

        PushButton {
            text: qsTr("Test Connection")
            enabled: !root.model.busy && form.isComplete && form.place !== SyncModel.Nowhere
            onClicked: root.model.test(form.place, form.where, form.user, form.password)
        }
    }
}

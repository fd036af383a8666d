import QtQuick
import Quillo

/// How keeping in step fares, and the computers that do.
FormSection {
    id: root

    required property SyncModel model

    visible: model.place !== SyncModel.Nowhere
    heading: qsTr("State")
    note: model.problem

    FormRow {
        id: last
        text: root.model.problem === "" && root.model.lastInStep !== "" ? qsTr("In step") : qsTr("Not in step")
        help: root.model.lastInStep !== "" ? qsTr("Last: %1").arg(root.model.lastInStep) : ""

        PushButton {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Sync Now")
            enabled: !root.model.busy
            onClicked: root.model.syncNow()
        }
    }

    Repeater {
        model: root.model.computers

        FormRow {
            id: computer

            required property var modelData

            text: modelData.name
            help: modelData.changed !== "" ? qsTr("Last changed: %1").arg(modelData.changed) : qsTr("Nothing was changed there yet.")

            PushButton {
                anchors.verticalCenter: parent.verticalCenter
                visible: computer.modelData.forgettable
                text: qsTr("Forget")
                hint: computer.text
                enabled: !root.model.busy
                onClicked: root.model.forget(computer.modelData.device)
            }
        }
    }
}

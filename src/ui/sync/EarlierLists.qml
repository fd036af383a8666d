import QtQuick
import Quillo

/// Lists that were replaced, or from which something was removed, and can be brought back.
FormSection {
    id: root

    required property SyncModel model

    visible: model.earlierLists.length > 0
    heading: qsTr("Earlier Lists")
    note: qsTr("The list that is there now is kept when an earlier one is brought back.")

    Repeater {
        model: root.model.earlierLists

        FormRow {
            id: row

            required property int index
            required property string modelData

            text: modelData

            PushButton {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Restore")
                hint: row.text
                enabled: !root.model.busy
                onClicked: root.model.restore(row.index)
            }
        }
    }
}

import QtQuick
import Quillo

/// What came of what was asked for last, or what has to be decided.
Column {
    id: root

    required property SyncModel model

    spacing: 8
    visible: model.busy || model.bothHaveTasks || model.answer !== ""

    Text {
        width: parent.width
        visible: text !== ""
        text: {
            if (root.model.busy)
                return qsTr("One moment…");
            if (root.model.bothHaveTasks)
                return qsTr("There are tasks here (%1) and there (%2). Which list goes on? The other one is kept among the earlier lists.").arg(root.model.tasksHere).arg(root.model.tasksThere);
            return root.model.answer;
        }
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        font.pixelSize: Theme.fontSize
        color: root.model.failed ? Theme.overdueText : Theme.text
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }

    Flow {
        width: parent.width
        spacing: 8
        visible: root.model.bothHaveTasks

        PushButton {
            text: qsTr("Keep the List of This Computer")
            onClicked: root.model.keepMine()
        }

        PushButton {
            text: qsTr("Keep the Other List")
            onClicked: root.model.keepTheirs()
        }
    }
}

pragma ComponentBehavior: Bound

import QtQuick
import Quillo

/// What the popover shows: a header, the entry field, the tasks, the way to the done ones, and a hint.
FocusScope {
    id: root

    required property PopoverModel model
    required property real cornerRadius

    /// To be called when the popover has come up.
    function begin() {
        if (!model.feedbackShown && !model.creditsShown)
            entry.forceActiveFocus();
    }

    /// To be called when it is gone, so that nothing half done is found at the next time.
    function end() {
        header.end();
        list.end();
    }

    Keys.onEscapePressed: root.model.closeRequested()

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: root.cornerRadius > 0 ? Theme.material : Theme.window
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
    }

    PopoverHeader {
        id: header
        anchors.top: parent.top
        anchors.left: parent.left
        anchors.right: parent.right
        model: root.model
        cornerRadius: root.cornerRadius
    }

    EntryRow {
        id: entry
        anchors.top: header.bottom
        anchors.topMargin: 8
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        focus: true
        model: root.model
        surface: root
        Keys.onDownPressed: list.enter()
    }

    TaskList {
        id: list
        anchors.top: entry.bottom
        anchors.topMargin: 8
        anchors.bottom: completed.top
        anchors.left: parent.left
        anchors.right: parent.right
        model: root.model
        surface: root
        onExited: entry.forceActiveFocus()
    }

    CompletedBar {
        id: completed
        anchors.bottom: footer.top
        anchors.left: parent.left
        anchors.right: parent.right
        model: root.model
    }

    PopoverFooter {
        id: footer
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        cornerRadius: root.cornerRadius
    }

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: "transparent"
        border.width: 1
        border.color: root.cornerRadius > 0 ? Theme.stroke : Theme.separator
    }

    CoverSheet {
        shown: root.model.feedbackShown
        cornerRadius: root.cornerRadius
        source: "FeedbackSheet.qml"
        inputs: ({
                feedback: root.model.feedback
            })
        onDismissed: root.model.feedbackShown = false
    }

    CoverSheet {
        shown: root.model.creditsShown
        cornerRadius: root.cornerRadius
        source: "CreditsSheet.qml"
        onDismissed: root.model.creditsShown = false
    }
}

import QtQuick
import Quillo

/// Edits a title in its place. Ends by Return or by losing the keyboard, which keep the text, or by Escape.
FocusScope {
    id: root

    required property string title
    /// What the field's menu opens in.
    required property Item surface

    /// `changed`: the text is to be kept.
    signal finished(string draft, bool changed)

    property bool done: false
    // As the field holds it, which may be less than a very long title.
    property string original

    function finish(keep) {
        if (done)
            return;
        done = true;
        finished(field.text, keep && field.text !== original);
    }

    Component.onCompleted: {
        field.text = title;
        original = field.text;
        field.selectAll();
        field.forceActiveFocus();
    }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: -8
        anchors.rightMargin: -4
        radius: 8
        color: Theme.field
        border.width: 2
        border.color: Theme.focusRing
    }

    EntryInput {
        id: field
        anchors.fill: parent
        focus: true
        name: qsTr("Edit")
        surface: root.surface
        onSubmitted: root.finish(true)
        onActiveFocusChanged: lost()
        onMenuShownChanged: lost()
        Keys.onEscapePressed: root.finish(false)

        function lost() {
            if (!activeFocus && !menuShown)
                root.finish(true);
        }
    }
}

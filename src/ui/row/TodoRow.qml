import QtQuick
import Quillo

/// One line of the task list.
FocusScope {
    id: root

    required property int index
    required property string taskId
    required property string title
    required property string editTitle
    required property bool done
    required property bool hasDue
    required property date due
    required property string dueText
    required property string dueSymbol
    required property string dueTone
    required property string accessibleText

    /// What the menu of a title that is being edited opens in.
    required property Item surface

    /// Its title is being edited.
    property bool editing: false
    /// A menu or card that belongs to it is open.
    property bool marked: false

    signal pressed
    signal toggleRequested
    signal editRequested
    signal editFinished(string draft, bool changed)
    signal reminderRequested
    signal deleteRequested
    signal menuRequested(point place)

    readonly property bool hovering: hover.hovered
    readonly property bool mirrored: LayoutMirroring.enabled
    /// Set by a tick until the task itself has changed, so that a row that leaves the list leaves it ticked.
    property bool flipped: false
    /// Off while the row is lent from one task to the next.
    property bool settled: false

    /// Where its menu opens when no pointer says so, in its own coordinates.
    readonly property rect menuPlace: Qt.rect(titleText.x, 0, titleText.width, height)
    /// Where its reminder card opens.
    readonly property rect reminderPlace: Qt.rect(actions.x, actions.y, actions.width, actions.height)

    /// Puts the keyboard into the last of the row's buttons, as Shift and Tab do.
    function enterFromBehind() {
        forceActiveFocus();
        (actions.item as RowActions)?.enterFromBehind();
    }

    implicitHeight: Math.max(36, 4 * Math.ceil((titleText.implicitHeight + (hasDue ? dueLabel.height + 2 : 0) + 16) / 4))

    Accessible.role: Accessible.ListItem
    Accessible.name: accessibleText
    Accessible.focusable: true
    Accessible.onPressAction: root.pressed()

    Component.onCompleted: settled = true
    ListView.onPooled: {
        settled = false;
        flipped = false;
    }
    ListView.onReused: {
        opacity = 1;
        settled = true;
    }
    onDoneChanged: flipped = false

    // When the keyboard comes back it is to the row itself, not to what it was in last.
    onActiveFocusChanged: {
        if (!activeFocus)
            actions.focus = false;
    }
    onEditingChanged: {
        if (!editing)
            editor.focus = false;
    }

    Rectangle {
        anchors.fill: parent
        anchors.leftMargin: 8
        anchors.rightMargin: 8
        radius: 6
        color: Theme.hover
        border.width: root.activeFocus && !actions.activeFocus && !root.editing ? 2 : 0
        border.color: Theme.focusRing
        visible: root.hovering || root.marked || root.activeFocus
    }

    HoverHandler {
        id: hover
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: mouse => {
            root.pressed();
            if (mouse.button === Qt.RightButton)
                root.menuRequested(Qt.point(mouse.x, mouse.y));
        }
        onDoubleClicked: mouse => {
            if (mouse.button === Qt.LeftButton)
                root.editRequested();
        }
    }

    CheckCircle {
        id: check
        anchors.left: parent.left
        anchors.leftMargin: 20
        anchors.verticalCenter: titleText.verticalCenter
        name: root.title
        checked: root.done !== root.flipped
        animated: root.settled
        onClicked: root.toggleRequested()
    }

    Text {
        id: titleText
        anchors.left: check.right
        anchors.leftMargin: 10
        anchors.right: actions.left
        anchors.rightMargin: 8
        y: root.hasDue ? (root.height - implicitHeight - dueLabel.height - 2) / 2 : (root.height - implicitHeight) / 2
        visible: !root.editing
        // A line holds no more than this, and laying out a title of thousands of letters takes its time.
        text: root.title.slice(0, 500)
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        horizontalAlignment: Text.AlignLeft
        font.pixelSize: Theme.fontSize
        font.strikeout: root.done
        color: root.done ? Theme.secondary : Theme.text
        Accessible.ignored: true
    }

    Loader {
        id: editor
        anchors.left: titleText.left
        anchors.right: titleText.right
        anchors.verticalCenter: titleText.verticalCenter
        height: titleText.height + 8
        active: root.editing
        sourceComponent: TitleEditor {
            title: root.editTitle
            surface: root.surface
            onFinished: (draft, changed) => root.editFinished(draft, changed)
        }
    }

    Loader {
        id: dueLabel
        anchors.left: titleText.left
        anchors.top: titleText.bottom
        anchors.topMargin: 2
        active: root.hasDue
        height: item?.implicitHeight ?? 0
        sourceComponent: DueLabel {
            text: root.dueText
            symbol: root.dueSymbol
            tone: root.dueTone
        }
    }

    Loader {
        id: actions
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: item?.implicitWidth ?? 0
        active: (root.hovering || root.marked || root.activeFocus) && !root.editing
        sourceComponent: RowActions {
            title: root.title
            reachable: root.activeFocus
            onReminderRequested: root.reminderRequested()
            onDeleteRequested: root.deleteRequested()
            onWentBack: actions.focus = false
        }
    }
}

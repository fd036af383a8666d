pragma ComponentBehavior: Bound

import QtQuick
import Quillo

/// The tasks, one a row. With the keyboard: the arrows choose a row, Space ticks it, Return edits it, Delete deletes it
/// and the menu key opens its menu.
FocusScope {
    id: root

    required property PopoverModel model
    /// What menus and cards open in.
    required property Item surface

    /// The keyboard goes up, out of the list.
    signal exited

    property string editedTask
    property string markedTask

    /// Puts the keyboard into the list.
    function enter() {
        if (view.count > 0)
            view.forceActiveFocus();
    }

    function enterFromBehind() {
        view.forceActiveFocus();
        (view.currentItem as TodoRow)?.enterFromBehind();
    }

    /// Closes what is open and goes back to the first row.
    function end() {
        menu.item?.close();
        reminder.item?.close();
        editedTask = "";
        view.positionViewAtBeginning();
        view.currentIndex = 0;
    }

    EmptyState {
        id: empty
        width: parent.width
        height: view.count > 0 ? implicitHeight : parent.height
        visible: root.model.activeCount === 0
        small: view.count > 0
        onSecretTap: root.model.creditsShown = true
    }

    ListView {
        id: view

        anchors.fill: parent
        anchors.topMargin: empty.visible ? empty.implicitHeight : 0
        bottomMargin: 8
        focus: true
        activeFocusOnTab: count > 0
        clip: true
        reuseItems: true
        cacheBuffer: 0
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        highlightResizeDuration: 0
        model: root.model.tasks
        delegate: TodoRow {
            id: row

            width: ListView.view.width
            surface: root.surface
            editing: taskId !== "" && taskId === root.editedTask
            marked: taskId !== "" && taskId === root.markedTask
            onPressed: root.choose(index)
            onToggleRequested: {
                root.choose(index);
                root.toggle(taskId);
            }
            onEditRequested: {
                root.choose(index);
                root.edit(taskId);
            }
            onEditFinished: (draft, changed) => root.finishEdit(row, draft, changed)
            onReminderRequested: root.openReminder(row)
            onDeleteRequested: root.remove(taskId)
            onMenuRequested: place => root.openMenu(row, Qt.rect(place.x, place.y, 0, 0), false)
        }

        Accessible.role: Accessible.List
        Accessible.name: qsTr("Quillo")

        Keys.onPressed: event => root.keyPressed(event)

        onActiveFocusChanged: {
            if (activeFocus)
                root.chooseVisible();
        }

        // By itself a list flies a page or more at each notch that soon follows another.
        WheelHandler {
            onWheel: event => root.turnWheel(event.angleDelta.y / root.notch)
        }

        add: Transition {
            enabled: !Theme.reduceMotion
            NumberAnimation {
                property: "opacity"
                from: 0
                to: 1
                duration: 180
                easing.type: Easing.InOutQuad
            }
        }
        remove: Transition {
            enabled: !Theme.reduceMotion
            NumberAnimation {
                property: "opacity"
                to: 0
                duration: root.leaveDuration
                easing.type: root.leaveEasing
            }
        }
        displaced: Transition {
            enabled: !Theme.reduceMotion
            NumberAnimation {
                property: "y"
                duration: 180
                easing.type: Easing.InOutQuad
            }
            NumberAnimation {
                property: "opacity"
                to: 1
                duration: 180
            }
        }
        move: Transition {
            enabled: !Theme.reduceMotion
            TickSpring {
                property: "y"
            }
        }
    }

    // Only a row with the keyboard in it has buttons to stop at: those who come back find them here.
    Item {
        activeFocusOnTab: view.count > 0 && !view.activeFocus
        onActiveFocusChanged: {
            if (activeFocus)
                root.enterFromBehind();
        }
    }

    ScrollHandle {
        anchors.top: view.top
        anchors.bottom: view.bottom
        anchors.right: parent.right
        flickable: view
    }

    Loader {
        id: menu
    }

    Connections {
        target: menu.item
        function onToggleRequested() {
            root.toggle(root.markedTask);
        }
        function onEditRequested() {
            root.edit(root.markedTask);
        }
        function onDeleteRequested() {
            root.remove(root.markedTask);
        }
        function onClosed() {
            root.markedTask = "";
        }
    }

    Loader {
        id: reminder
    }

    Connections {
        target: reminder.item
        function onChosen(when) {
            root.model.setReminder(root.markedTask, when);
            (reminder.item as ReminderPopup).close();
        }
        function onCleared() {
            root.model.clearReminder(root.markedTask);
            (reminder.item as ReminderPopup).close();
        }
        function onClosed() {
            root.markedTask = "";
        }
    }

    // How long a row that leaves the list takes, and how.
    property int leaveDuration: 180
    property int leaveEasing: Easing.InOutQuad

    function choose(index) {
        view.currentIndex = index;
        view.forceActiveFocus();
    }

    function toggle(taskId) {
        leaveDuration = 180;
        leaveEasing = Easing.InOutQuad;
        const row = view.currentItem as TodoRow;
        if (row?.taskId === taskId)
            row.flipped = true;
        if (!model.toggle(taskId) && row)
            row.flipped = false;
    }

    function remove(taskId) {
        leaveDuration = 100;
        leaveEasing = Easing.InQuad;
        model.remove(taskId);
    }

    function edit(taskId) {
        editedTask = taskId;
    }

    function finishEdit(row, draft, changed) {
        const hadKeyboard = row.activeFocus;
        if (editedTask === row.taskId)
            editedTask = "";
        if (hadKeyboard)
            view.forceActiveFocus();
        if (changed && draft.trim() !== "")
            model.rename(row.taskId, draft);
    }

    function openMenu(row, place, byKeyboard) {
        if (menu.status === Loader.Null)
            menu.setSource("TaskMenu.qml", {
                parent: root.surface,
                done: row.done
            });
        const opened = menu.item as TaskMenu;
        opened.done = row.done;
        markedTask = row.taskId;
        opened.openAt(row.mapToItem(root.surface, place), byKeyboard);
    }

    // Made anew each time: it starts from the present time.
    function openReminder(row) {
        reminder.setSource("ReminderPopup.qml", {
            parent: root.surface,
            model: root.model,
            hasDue: row.hasDue,
            due: row.due
        });
        markedTask = row.taskId;
        (reminder.item as ReminderPopup).openAt(row.mapToItem(root.surface, row.reminderPlace));
    }

    // One notch of a wheel, in eighths of a degree: https://doc.qt.io/qt-6/qwheelevent.html#angleDelta
    readonly property int notch: 120
    /// By so many rows each notch, as far as lists go elsewhere.
    readonly property int rowsPerNotch: 3

    function turnWheel(notches) {
        const row = view.currentItem as TodoRow;
        if (!row)
            return;
        const last = Math.max(0, view.contentHeight + view.bottomMargin - view.height);
        const wanted = view.contentY - view.originY - notches * rowsPerNotch * row.height;
        view.contentY = view.originY + Math.max(0, Math.min(last, wanted));
    }

    /// Where the list has been scrolled away from the row that is chosen, one that is seen is.
    function chooseVisible() {
        const row = view.currentItem as TodoRow;
        if (!row)
            return;
        const top = view.indexAt(0, view.contentY);
        if (row.y + row.height <= view.contentY)
            view.currentIndex = top + 1;
        else if (row.y >= view.contentY + view.height)
            view.currentIndex = top;
    }

    function goTo(index) {
        view.currentIndex = Math.max(0, Math.min(view.count - 1, index));
    }

    function rowsPerPage() {
        return Math.max(1, Math.floor(view.height / (view.currentItem?.height ?? view.height)) - 1);
    }

    function keyPressed(event) {
        const row = view.currentItem as TodoRow;
        if (!row || row.editing)
            return;
        switch (event.key) {
        case Qt.Key_Up:
            if (view.currentIndex === 0)
                root.exited();
            else
                goTo(view.currentIndex - 1);
            break;
        case Qt.Key_Down:
            goTo(view.currentIndex + 1);
            break;
        case Qt.Key_Home:
            goTo(0);
            break;
        case Qt.Key_End:
            goTo(view.count - 1);
            break;
        case Qt.Key_PageUp:
            goTo(view.currentIndex - rowsPerPage());
            break;
        case Qt.Key_PageDown:
            goTo(view.currentIndex + rowsPerPage());
            break;
        case Qt.Key_Space:
            if (!event.isAutoRepeat)
                toggle(row.taskId);
            break;
        case Qt.Key_Return:
        case Qt.Key_Enter:
        case Qt.Key_F2:
            edit(row.taskId);
            break;
        case Qt.Key_Delete:
            if (!event.isAutoRepeat)
                remove(row.taskId);
            break;
        case Qt.Key_Menu:
            openMenu(row, row.menuPlace, true);
            break;
        case Qt.Key_F10:
            if (!(event.modifiers & Qt.ShiftModifier))
                return;
            openMenu(row, row.menuPlace, true);
            break;
        default:
            return;
        }
        event.accepted = true;
    }
}

import QtQuick
import Quillo

/// What may be higher than its window, one below the other. What gets the keyboard comes into view.
Item {
    id: root

    property real margin: 20
    property real spacing: 20
    default property alias content: column.data

    /// Scrolls so far that it is in sight.
    function show(item) {
        const top = item.mapToItem(column, 0, 0).y + column.y;
        const last = Math.max(0, view.contentHeight - view.height);
        const lowest = Math.min(last, top - root.margin);
        const highest = Math.max(0, top + item.height + root.margin - view.height);
        view.contentY = Math.max(0, Math.min(lowest, Math.max(highest, view.contentY)));
    }

    function isInside(item) {
        for (let each = item; each; each = each.parent) {
            if (each === column)
                return true;
        }
        return false;
    }

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged() {
            const item = root.Window.activeFocusItem;
            if (root.isInside(item))
                root.show(item);
        }
    }

    Flickable {
        id: view
        anchors.fill: parent
        contentWidth: width
        contentHeight: column.implicitHeight + 2 * root.margin
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: column
            x: root.margin
            y: root.margin
            width: view.width - 2 * root.margin
            spacing: root.spacing
        }
    }

    ScrollHandle {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.margins: 2
        flickable: view
    }
}

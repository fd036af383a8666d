import QtQuick

/// The keys that scroll what cannot be chosen from.
QtObject {
    id: root

    required property Flickable flickable
    /// How far an arrow scrolls; a page leaves as much in sight.
    property real line: 40

    /// Accepts the event if it scrolls.
    function scroll(event) {
        const page = flickable.height - line;
        const ways = new Map([
            [Qt.Key_Up, -line],
            [Qt.Key_Down, line],
            [Qt.Key_PageUp, -page],
            [Qt.Key_PageDown, page],
            [Qt.Key_Space, page],
            [Qt.Key_Home, -flickable.contentHeight],
            [Qt.Key_End, flickable.contentHeight]
        ]);
        event.accepted = ways.has(event.key);
        if (event.accepted)
            flickable.contentY = Math.max(0, Math.min(flickable.contentHeight - flickable.height, flickable.contentY + ways.get(event.key)));
    }
}

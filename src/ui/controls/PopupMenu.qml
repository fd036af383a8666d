import QtQuick
import QtQuick.Templates as T
import Quillo

/// A menu that opens inside its parent, as wide as its widest line.
T.Menu {
    id: root

    /// How near it comes to the parent's edges.
    property real edge: 8
    property real mostWidth: (parent?.width ?? 0) - 2 * edge
    property rect place
    readonly property real gap: 4
    readonly property bool fitsBelow: place.y + place.height + gap + height + edge <= (parent?.height ?? 0)

    /// Opens below `place`, a rectangle in the parent's coordinates, or above it where there is no room, its leading
    /// edge at that of the place. From the keyboard the first line that can be chosen is chosen at once.
    function openAt(place, byKeyboard) {
        root.place = place;
        root.open();
        if (byKeyboard)
            root.currentIndex = root.firstLine();
    }

    function firstLine() {
        for (let line = 0; line < count; ++line) {
            if (itemAt(line) instanceof PopupMenuItem && itemAt(line).enabled)
                return line;
        }
        return -1;
    }

    x: {
        const wanted = mirrored ? place.x + place.width - width : place.x;
        return Math.max(edge, Math.min((parent?.width ?? 0) - width - edge, wanted));
    }
    y: Math.max(edge, Math.min((parent?.height ?? 0) - height - edge, fitsBelow ? place.y + place.height + gap : place.y - gap - height))

    padding: 4
    modal: true
    dim: false
    overlap: 0

    T.Overlay.modal: Item {}

    readonly property FocusKeeper keyboard: FocusKeeper {
        within: root.parent
    }

    onAboutToShow: keyboard.keep()
    onClosed: keyboard.giveBack()

    background: CardFrame {}

    contentItem: ListView {
        implicitHeight: contentHeight
        implicitWidth: {
            let widest = 120;
            for (let line = 0; line < root.count; ++line)
                widest = Math.max(widest, root.itemAt(line)?.implicitWidth ?? 0);
            return Math.min(widest, root.mostWidth - root.leftPadding - root.rightPadding);
        }
        model: root.contentModel
        currentIndex: root.currentIndex
        interactive: false
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding

    enter: FadeIn {}
    exit: FadeOut {}
}

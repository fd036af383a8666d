import QtQuick
import QtQuick.Templates as T
import Quillo

/// A menu that opens inside its parent, as wide as its widest line.
T.Menu {
    id: root

    property rect place
    readonly property real gap: 4
    readonly property bool fitsBelow: place.y + place.height + gap + height + 8 <= (parent?.height ?? 0)

    /// Opens below `place`, a rectangle in the parent's coordinates, or above it where there is no room, its leading
    /// edge at that of the place. From the keyboard the first line is chosen at once.
    function openAt(place, byKeyboard) {
        root.place = place;
        root.open();
        if (byKeyboard)
            root.currentIndex = 0;
    }

    x: {
        const wanted = mirrored ? place.x + place.width - width : place.x;
        return Math.max(8, Math.min((parent?.width ?? 0) - width - 8, wanted));
    }
    y: Math.max(8, Math.min((parent?.height ?? 0) - height - 8, fitsBelow ? place.y + place.height + gap : place.y - gap - height))

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
            return Math.min(widest, (root.parent?.width ?? widest) - 24);
        }
        model: root.contentModel
        currentIndex: root.currentIndex
        interactive: false
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding

    enter: Transition {
        enabled: !Theme.reduceMotion
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 90
        }
    }
    exit: Transition {
        enabled: !Theme.reduceMotion
        NumberAnimation {
            property: "opacity"
            to: 0
            duration: 90
        }
    }
}

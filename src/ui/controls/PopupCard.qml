import QtQuick
import QtQuick.Templates as T
import Quillo

/// A small card above the popover's content. It closes by Escape or a press beside it; that press does nothing else.
T.Popup {
    id: root

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 12
    modal: true
    dim: false
    focus: true

    T.Overlay.modal: Item {}

    readonly property FocusKeeper keyboard: FocusKeeper {
        within: root.parent
    }

    onAboutToShow: keyboard.keep()
    onClosed: keyboard.giveBack()

    background: CardFrame {}

    enter: FadeIn {}
    exit: FadeOut {}

    /// Opens below `place`, a rectangle in the parent's coordinates, or above it where there is no room; wholly
    /// inside the parent, whatever its size becomes later.
    function openAt(place) {
        root.place = place;
        root.open();
    }

    property rect place
    readonly property real gap: 4
    readonly property bool fitsBelow: place.y + place.height + gap + height + 8 <= (parent?.height ?? 0)

    x: Math.max(8, Math.min((parent?.width ?? 0) - width - 8, place.x))
    y: Math.max(8, Math.min((parent?.height ?? 0) - height - 8, fitsBelow ? place.y + place.height + gap : place.y - gap - height))
}

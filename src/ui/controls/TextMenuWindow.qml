import QtQuick
import Quillo

/// The context menu of a text field, in a window of its own.
Window {
    id: root

    required property TextInput field

    signal closed

    /// Opens below `place`, a rectangle on the desktop, or above it where the screen ends.
    function openAt(place, byKeyboard) {
        root.place = place;
        root.show();
        root.requestActivate();
        menu.openAt(Qt.rect(0, 0, 0, 0), byKeyboard);
    }

    property rect place
    readonly property int shadowWidth: Theme.reduceTransparency ? 0 : 8
    readonly property real gap: 4
    readonly property real screenEnd: Screen.virtualX + Screen.width
    readonly property real screenBottom: Screen.virtualY + Screen.height
    readonly property bool fitsBelow: place.y + place.height + gap + menu.height <= screenBottom

    x: {
        const wanted = root.LayoutMirroring.enabled ? place.x + place.width - menu.width : place.x;
        return Math.max(Screen.virtualX, Math.min(screenEnd - menu.width, wanted)) - shadowWidth;
    }
    y: (fitsBelow ? place.y + place.height + gap : place.y - gap - menu.height) - shadowWidth
    width: menu.width + 2 * shadowWidth
    height: menu.height + 2 * shadowWidth
    visible: false
    color: Theme.reduceTransparency ? Theme.window : "transparent"
    // Wayland places nothing but popups; window managers of X11 give the keyboard to nothing but windows.
    flags: (Qt.platform.pluginName.startsWith("wayland") ? Qt.Popup : Qt.Tool) | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    title: qsTr("Menu")
    transientParent: field.Window.window

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    onActiveChanged: {
        if (!active)
            menu.close();
    }

    Connections {
        target: root.transientParent
        function onVisibleChanged() {
            menu.close();
        }
    }

    TextMenu {
        id: menu
        parent: root.contentItem
        field: root.field
        edge: root.shadowWidth
        mostWidth: Screen.width
        onClosed: {
            if (root.active)
                root.transientParent.requestActivate();
            root.hide();
            root.closed();
        }
    }
}

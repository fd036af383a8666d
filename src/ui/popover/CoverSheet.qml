import QtQuick
import Quillo

/// A place for something that covers the popover until it is dismissed. Nothing is loaded before it is first shown.
Item {
    id: root

    required property bool shown
    required property url source
    required property real cornerRadius
    /// What else the sheet is given when it is loaded, by the names of its properties.
    property var inputs: ({})

    signal dismissed

    anchors.fill: parent

    onShownChanged: update()
    Component.onCompleted: update()

    function update() {
        if (shown && loader.status === Loader.Null)
            loader.setSource(source, Object.assign({
                parent: root.parent,
                cornerRadius: Qt.binding(() => root.cornerRadius)
            }, inputs));
        if (loader.item)
            loader.item.visible = shown;
    }

    Loader {
        id: loader
        onLoaded: (item as SheetPopup).visible = root.shown
    }

    Connections {
        target: loader.item
        function onClosed() {
            if (root.shown)
                root.dismissed();
        }
    }
}

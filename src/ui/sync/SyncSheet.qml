import QtQuick
import QtQuick.Templates as T
import Quillo

/// Where the list is kept in step through, how that fares, and what earlier lists there are.
PopupCard {
    id: root

    required property SyncModel model

    /// What is shown has changed in height, or is shown anew.
    readonly property real roomAbove: 16

    x: Math.round(((parent?.width ?? 0) - width) / 2)
    y: roomAbove
    width: (parent?.width ?? 0) - 2 * roomAbove
    height: (parent?.height ?? 0) - 2 * roomAbove
    padding: 0
    dim: true

    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, Theme.dark ? 0.45 : 0.25)
    }

    onAboutToShow: {
        model.refresh();
        page.active = true;
    }
    onClosed: {
        page.active = false; // What was typed goes with it.
        model.dismiss();
    }

    contentItem: Loader {
        id: page
        active: false
        focus: true
        sourceComponent: SyncPage {
            model: root.model
            onCloseRequested: root.close()
        }
    }
}

import QtQuick

/// Remembers what has the keyboard while something that opens above takes it.
QtObject {
    id: root

    /// An item of the window, which gets the keyboard where its holder is gone.
    required property Item within

    property Item holder: null

    function keep() {
        root.holder = root.within.Window.activeFocusItem;
    }

    /// Gives the keyboard back, unless somebody has taken it since.
    function giveBack() {
        const now = root.within.Window.activeFocusItem;
        if (!now || now === root.within.Window.contentItem)
            (root.holder ?? root.within).forceActiveFocus();
        root.holder = null;
    }
}

import QtQuick
import Quillo

/// A window of the program's own besides the popover: as large as its content asks for, and of no other size.
Window {
    id: root

    required property int contentWidth
    required property int contentHeight

    visible: false
    color: Theme.window
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowCloseButtonHint

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    Component.onCompleted: fit()
    onContentWidthChanged: fit()
    onContentHeightChanged: fit()

    /// The limits first: a window manager that hears of the size before holds it to the old ones.
    function fit() {
        minimumWidth = contentWidth;
        maximumWidth = contentWidth;
        minimumHeight = contentHeight;
        maximumHeight = contentHeight;
        width = contentWidth;
        height = contentHeight;
    }
}

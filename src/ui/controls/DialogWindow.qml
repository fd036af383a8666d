import QtQuick
import Quillo

/// A window of the program's own besides the popover: as large as its content asks for, and of no other size.
Window {
    id: root

    required property int contentWidth
    required property int contentHeight

    // These alone, which give it its size: a window manager that hears of the size first holds it to the old limits.
    minimumWidth: contentWidth
    maximumWidth: contentWidth
    minimumHeight: contentHeight
    maximumHeight: contentHeight
    visible: false
    color: Theme.window
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowCloseButtonHint

    LayoutMirroring.enabled: Application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true
}

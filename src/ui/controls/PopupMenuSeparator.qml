import QtQuick
import QtQuick.Templates as T
import Quillo

/// The line between two groups of a menu.
T.MenuSeparator {
    implicitWidth: 0
    implicitHeight: 9
    padding: 4
    leftPadding: 8
    rightPadding: 8

    contentItem: Rectangle {
        implicitHeight: 1
        color: Theme.separator
    }
}

import QtQuick
import Quillo

/// When a task is due, in one short line.
Row {
    id: root

    required property string text
    required property string symbol
    /// "done", "overdue", "today" or "later"
    required property string tone

    readonly property color symbolColor: ({
            done: Theme.faint,
            overdue: Theme.overdueRed,
            today: Theme.todayOrange
        })[tone] ?? Theme.accent
    readonly property color textColor: ({
            done: Theme.faintText,
            overdue: Theme.overdueText,
            today: Theme.todayText
        })[tone] ?? Theme.accentLabel

    spacing: 4

    Icon {
        anchors.verticalCenter: parent.verticalCenter
        symbol: root.symbol
        size: 12
        color: root.symbolColor
    }

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        textFormat: Text.PlainText
        font.pixelSize: Theme.captionSize
        color: root.textColor
        Accessible.ignored: true
    }
}

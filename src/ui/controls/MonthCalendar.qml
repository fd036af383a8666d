pragma ComponentBehavior: Bound

import QtQuick
import Quillo

/// One month, to choose a day from. The arrows go a day or a week, Page Up and Page Down a month, Home and End to the
/// ends of the week; Space and Escape leave it.
FocusScope {
    id: root

    required property date value
    /// The weekday of the first column: 1 (Monday) to 7.
    required property int weekStart

    /// A day was chosen; its time of day is that of `value`.
    signal picked(date day)
    signal finished

    property int year: value.getFullYear()
    property int month: value.getMonth()
    readonly property int leadingDays: (new Date(year, month, 1).getDay() - weekStart % 7 + 7) % 7
    readonly property real cellWidth: Math.floor(width / 7)
    readonly property real cellHeight: Math.max(24, Theme.fontSize + 11)

    onValueChanged: {
        year = value.getFullYear();
        month = value.getMonth();
    }

    function pick(year, month, day) {
        picked(new Date(year, month, day, value.getHours(), value.getMinutes()));
    }

    function pickDays(days) {
        pick(value.getFullYear(), value.getMonth(), value.getDate() + days);
    }

    function pickMonths(months) {
        const lastDay = new Date(value.getFullYear(), value.getMonth() + months + 1, 0).getDate();
        pick(value.getFullYear(), value.getMonth() + months, Math.min(value.getDate(), lastDay));
    }

    function showMonths(months) {
        const first = new Date(year, month + months, 1);
        year = first.getFullYear();
        month = first.getMonth();
    }

    readonly property bool mirrored: LayoutMirroring.enabled

    implicitHeight: grid.y + grid.height

    Item {
        id: header
        width: parent.width
        height: 28

        IconButton {
            id: previous
            anchors.left: parent.left
            symbol: root.mirrored ? "chevron.right" : "chevron.left"
            symbolSize: 12
            name: qsTr("Previous month")
            onClicked: root.showMonths(-1)
        }

        Text {
            id: title
            anchors.left: previous.right
            anchors.right: next.left
            anchors.verticalCenter: parent.verticalCenter
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("%1 %2").arg(Qt.locale().standaloneMonthName(root.month, Locale.LongFormat)).arg(new Date(root.year, root.month, 1).toLocaleDateString(Qt.locale(), "yyyy"))
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font.pixelSize: Theme.fontSize
            font.weight: Font.DemiBold
            color: Theme.text
            Accessible.ignored: true
        }

        IconButton {
            id: next
            anchors.right: parent.right
            symbol: root.mirrored ? "chevron.left" : "chevron.right"
            symbolSize: 12
            name: qsTr("Next month")
            onClicked: root.showMonths(1)
        }
    }

    Row {
        id: weekdays
        anchors.top: header.bottom
        anchors.horizontalCenter: parent.horizontalCenter

        Repeater {
            model: 7

            Text {
                required property int index
                width: root.cellWidth
                height: 20
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                text: Qt.locale().standaloneDayName((root.weekStart + index) % 7, Locale.ShortFormat)
                textFormat: Text.PlainText
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 8
                font.pixelSize: Theme.captionSize
                color: Theme.secondary
                Accessible.ignored: true
            }
        }
    }

    FocusRing {
        anchors.fill: grid
        visible: grid.activeFocus
    }

    Grid {
        id: grid
        anchors.top: weekdays.bottom
        anchors.horizontalCenter: parent.horizontalCenter
        columns: 7
        focus: true
        activeFocusOnTab: true

        Accessible.role: Accessible.Table
        Accessible.name: title.text
        Accessible.focusable: true

        Keys.onLeftPressed: root.pickDays(root.mirrored ? 1 : -1)
        Keys.onRightPressed: root.pickDays(root.mirrored ? -1 : 1)
        Keys.onUpPressed: root.pickDays(-7)
        Keys.onDownPressed: root.pickDays(7)
        Keys.onSpacePressed: root.finished()
        Keys.onEscapePressed: root.finished()
        Keys.onPressed: event => {
            const intoWeek = (root.value.getDay() - root.weekStart % 7 + 7) % 7;
            switch (event.key) {
            case Qt.Key_PageUp:
                root.pickMonths(-1);
                break;
            case Qt.Key_PageDown:
                root.pickMonths(1);
                break;
            case Qt.Key_Home:
                root.pickDays(-intoWeek);
                break;
            case Qt.Key_End:
                root.pickDays(6 - intoWeek);
                break;
            default:
                return;
            }
            event.accepted = true;
        }

        Repeater {
            model: 42

            Item {
                id: cell

                required property int index
                readonly property date day: new Date(root.year, root.month, 1 - root.leadingDays + index)
                readonly property bool chosen: day.toDateString() === root.value.toDateString()
                readonly property bool today: day.toDateString() === new Date().toDateString()
                readonly property bool outside: day.getMonth() !== root.month

                function pick() {
                    root.pick(day.getFullYear(), day.getMonth(), day.getDate());
                }

                implicitWidth: root.cellWidth
                implicitHeight: root.cellHeight

                Accessible.role: Accessible.Cell
                Accessible.name: day.toLocaleDateString(Qt.locale(), Locale.LongFormat)
                Accessible.selectable: true
                Accessible.selected: chosen
                Accessible.onPressAction: cell.pick()

                Rectangle {
                    anchors.centerIn: parent
                    width: Math.min(parent.width, parent.height + 6)
                    height: parent.height
                    radius: 6
                    color: cell.chosen ? Theme.accent : area.containsMouse ? Theme.hover : "transparent"
                    border.width: cell.today && !cell.chosen ? 1 : 0
                    border.color: Theme.accent
                }

                Text {
                    anchors.centerIn: parent
                    text: Number(cell.day.getDate()).toLocaleString(Qt.locale(), "f", 0)
                    textFormat: Text.PlainText
                    font.pixelSize: Theme.fontSize
                    color: cell.chosen ? Theme.accentText : cell.outside ? Theme.faintText : Theme.text
                    Accessible.ignored: true
                }

                MouseArea {
                    id: area
                    anchors.fill: parent
                    hoverEnabled: true
                    onClicked: cell.pick()
                    onDoubleClicked: root.finished()
                }
            }
        }
    }
}

import QtQuick
import Quillo

/// A day, to be changed by Up and Down (a day), Page Up and Page Down (a month), the wheel, or in a calendar that the
/// field's user shows while `unfolded`.
PickerFrame {
    id: root

    required property date value
    property bool unfolded: false

    /// A day was chosen; its time of day is that of `value`.
    signal picked(date day)

    function pickDays(days) {
        picked(new Date(value.getFullYear(), value.getMonth(), value.getDate() + days, value.getHours(), value.getMinutes()));
    }

    function pickMonths(months) {
        const lastDay = new Date(value.getFullYear(), value.getMonth() + months + 1, 0).getDate();
        picked(new Date(value.getFullYear(), value.getMonth() + months, Math.min(value.getDate(), lastDay), value.getHours(), value.getMinutes()));
    }

    name: qsTr("Date")
    shown: value.toLocaleDateString(Qt.locale(), Locale.LongFormat)

    Accessible.role: Accessible.ButtonDropDown
    Accessible.onPressAction: root.unfolded = !root.unfolded
    Accessible.onIncreaseAction: root.pickDays(1)
    Accessible.onDecreaseAction: root.pickDays(-1)

    Keys.onUpPressed: root.pickDays(1)
    Keys.onDownPressed: root.pickDays(-1)
    Keys.onSpacePressed: root.unfolded = !root.unfolded
    Keys.onEscapePressed: event => {
        event.accepted = root.unfolded;
        root.unfolded = false;
    }
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageUp)
            root.pickMonths(1);
        else if (event.key === Qt.Key_PageDown)
            root.pickMonths(-1);
        else
            return;
        event.accepted = true;
    }

    MouseArea {
        anchors.fill: parent
        onClicked: {
            root.forceActiveFocus();
            root.unfolded = !root.unfolded;
        }
    }

    WheelSteps {
        onStepped: steps => root.pickDays(steps)
    }

    Text {
        anchors.left: parent.left
        anchors.leftMargin: 8
        anchors.right: chevron.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        text: root.value.toLocaleDateString(Qt.locale(), Locale.ShortFormat)
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Theme.captionSize
        font.pixelSize: Theme.fontSize
        color: Theme.text
        Accessible.ignored: true
    }

    Icon {
        id: chevron
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        symbol: root.unfolded ? "chevron.up" : "chevron.down"
        size: 12
        color: Theme.secondary
    }
}

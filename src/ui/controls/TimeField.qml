pragma ComponentBehavior: Bound

import QtQuick
import Quillo

/// A time of day in the locale's form. Left and Right go between its parts, Up, Down and the wheel change one, digits
/// and the first letter of the half of the day are typed.
PickerFrame {
    id: root

    /// For assistive technologies: minutes since midnight.
    readonly property int minutes: value.getHours() * 60 + value.getMinutes()
    required property date value

    /// A time was chosen; its day is that of `value`.
    signal picked(date time)

    readonly property string format: Qt.locale().timeFormat(Locale.ShortFormat)
    readonly property bool halves: /a/i.test(format)
    readonly property var parts: !halves ? ["hour", "minute"] : format.search(/a/i) < format.search(/h/i) ? ["half", "hour", "minute"] : ["hour", "minute", "half"]
    readonly property string separator: /h+(.*?)m/i.exec(format)?.[1] ?? ":"

    property int part: parts.indexOf("hour")
    /// The number typed so far into the part.
    property int typed: 0

    function pick(hours, minutes) {
        picked(new Date(value.getFullYear(), value.getMonth(), value.getDate(), hours, minutes));
    }

    function step(steps) {
        const hours = value.getHours();
        const minutes = value.getMinutes();
        typed = 0;
        switch (parts[part]) {
        case "hour":
            return pick((hours + steps + 24) % 24, minutes);
        case "minute":
            return pick(hours, (minutes + steps + 60) % 60);
        case "half":
            return pick((hours + 12) % 24, minutes);
        }
    }

    function select(next) {
        part = Math.max(0, Math.min(parts.length - 1, next));
        typed = 0;
    }

    function typeDigit(digit) {
        const hour = parts[part] === "hour";
        if (!hour && parts[part] !== "minute")
            return;
        const most = !hour ? 59 : halves ? 12 : 23;
        const number = typed * 10 + digit <= most ? typed * 10 + digit : digit;
        if (!hour)
            pick(value.getHours(), number);
        else if (halves)
            pick(number % 12 + (value.getHours() < 12 ? 0 : 12), value.getMinutes());
        else
            pick(number, value.getMinutes());
        typed = number;
        if (hour && number * 10 > most)
            select(part + 1);
    }

    function typeLetter(letter) {
        const locale = Qt.locale();
        if (!halves || letter === "")
            return;
        if (locale.amText.toLowerCase().startsWith(letter))
            pick(value.getHours() % 12, value.getMinutes());
        else if (locale.pmText.toLowerCase().startsWith(letter))
            pick(value.getHours() % 12 + 12, value.getMinutes());
    }

    function textOf(part) {
        switch (part) {
        case "hour":
            return /hh/i.test(format) ? two(shownHour()) : digits(shownHour());
        case "minute":
            return two(value.getMinutes());
        case "half":
            return value.getHours() < 12 ? Qt.locale().amText : Qt.locale().pmText;
        }
    }

    function shownHour() {
        return halves ? (value.getHours() + 11) % 12 + 1 : value.getHours();
    }

    function two(number) {
        return number < 10 ? Qt.locale().zeroDigit + digits(number) : digits(number);
    }

    function digits(number) {
        return Number(number).toLocaleString(Qt.locale(), "f", 0);
    }

    name: qsTr("Time")
    shown: value.toLocaleTimeString(Qt.locale(), Locale.ShortFormat)
    implicitWidth: segments.implicitWidth + 16

    Accessible.role: Accessible.SpinBox
    Accessible.onIncreaseAction: root.step(1)
    Accessible.onDecreaseAction: root.step(-1)

    onActiveFocusChanged: typed = 0

    Keys.onUpPressed: root.step(1)
    Keys.onDownPressed: root.step(-1)
    Keys.onLeftPressed: root.select(root.part - 1)
    Keys.onRightPressed: root.select(root.part + 1)
    Keys.onPressed: event => {
        if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier))
            return;
        if (event.key >= Qt.Key_0 && event.key <= Qt.Key_9)
            root.typeDigit(event.key - Qt.Key_0);
        else if (/^\p{L}$/u.test(event.text))
            root.typeLetter(event.text.toLowerCase());
        else
            return;
        event.accepted = true;
    }

    MouseArea {
        anchors.fill: parent
        onPressed: root.forceActiveFocus()
    }

    WheelSteps {
        onStepped: steps => root.step(steps)
    }

    Row {
        id: segments
        // Times are written from left to right, whatever the direction of the rest.
        LayoutMirroring.enabled: false
        LayoutMirroring.childrenInherit: true
        anchors.centerIn: parent
        spacing: 2

        Repeater {
            model: root.parts

            Row {
                id: segment

                required property int index
                required property string modelData
                readonly property bool chosen: root.activeFocus && root.part === index

                spacing: 2

                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: segment.index > 0
                    text: segment.modelData === "minute" ? root.separator : ""
                    font.pixelSize: Theme.fontSize
                    color: Theme.text
                    Accessible.ignored: true
                }

                Rectangle {
                    implicitWidth: number.implicitWidth + 6
                    implicitHeight: number.implicitHeight + 4
                    radius: 3
                    color: segment.chosen ? Theme.accent : "transparent"

                    Text {
                        id: number
                        anchors.centerIn: parent
                        text: root.textOf(segment.modelData)
                        textFormat: Text.PlainText
                        font.pixelSize: Theme.fontSize
                        color: segment.chosen ? Theme.accentText : Theme.text
                        Accessible.ignored: true
                    }

                    MouseArea {
                        anchors.fill: parent
                        onPressed: {
                            root.forceActiveFocus();
                            root.select(segment.index);
                        }
                    }
                }
            }
        }
    }
}

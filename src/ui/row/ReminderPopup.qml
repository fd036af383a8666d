import QtQuick
import Quillo

/// Asks when to remind of a task. A quick choice applies at once; Return sets what the pickers show.
PopupCard {
    id: root

    required property PopoverModel model
    required property bool hasDue
    required property date due

    signal chosen(date when)
    signal cleared

    property date pickerDate: hasDue ? due : model.reminderChoice(PopoverModel.InOneHour)

    contentItem: FocusScope {
        focus: true
        implicitWidth: 256
        implicitHeight: column.implicitHeight

        Accessible.role: Accessible.Dialog
        Accessible.name: heading.text

        Keys.onReturnPressed: root.chosen(root.pickerDate)
        Keys.onEnterPressed: root.chosen(root.pickerDate)

        Column {
            id: column
            width: parent.width
            spacing: 8

            Text {
                id: heading
                width: parent.width
                text: qsTr("Remind me")
                textFormat: Text.PlainText
                horizontalAlignment: Text.AlignLeft
                font.pixelSize: Theme.fontSize
                font.weight: Font.DemiBold
                color: Theme.text
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            Flow {
                width: parent.width
                spacing: 4

                Repeater {
                    model: [
                        {
                            text: qsTr("In 1 hour"),
                            choice: PopoverModel.InOneHour
                        },
                        {
                            text: qsTr("In 3 hours"),
                            choice: PopoverModel.InThreeHours
                        },
                        {
                            text: qsTr("Tonight"),
                            choice: PopoverModel.Tonight
                        },
                        {
                            text: qsTr("Tomorrow 9 AM"),
                            choice: PopoverModel.TomorrowMorning
                        }
                    ]

                    PushButton {
                        required property var modelData
                        readonly property real half: (column.width - 4) / 2

                        width: implicitWidth > half ? column.width : half
                        text: modelData.text
                        onClicked: root.chosen(root.model.reminderChoice(modelData.choice))
                    }
                }
            }

            Row {
                spacing: 4

                DateField {
                    id: dateField
                    width: column.width - timeField.width - 4
                    value: root.pickerDate
                    focus: true
                    onPicked: day => root.pickerDate = day
                }

                TimeField {
                    id: timeField
                    value: root.pickerDate
                    onPicked: time => root.pickerDate = time
                }
            }

            Loader {
                width: parent.width
                active: dateField.unfolded
                visible: active
                sourceComponent: MonthCalendar {
                    value: root.pickerDate
                    weekStart: root.model.weekStart()
                    onPicked: day => root.pickerDate = day
                    onFinished: {
                        dateField.unfolded = false;
                        dateField.forceActiveFocus();
                    }
                }
            }

            Row {
                width: parent.width
                spacing: 4
                layoutDirection: Qt.RightToLeft

                PushButton {
                    width: (column.width - 4) / 2
                    text: qsTr("Set")
                    prominent: true
                    onClicked: root.chosen(root.pickerDate)
                }

                PushButton {
                    width: (column.width - 4) / 2
                    text: qsTr("Clear")
                    visible: root.hasDue
                    onClicked: root.cleared()
                }
            }
        }
    }
}

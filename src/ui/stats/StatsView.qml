pragma ComponentBehavior: Bound

import QtQuick
import Quillo

/// The numbers, the rank, the records and the awards. It scrolls where large letters or long words need more room.
Flickable {
    id: root

    required property StatsModel model

    readonly property real margin: 20
    readonly property real gap: 8
    readonly property real innerWidth: width - 2 * margin

    contentHeight: column.height + 2 * margin
    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight > height
    clip: true

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Quillo Statistics")

    readonly property ScrollKeys keys: ScrollKeys {
        flickable: root
    }

    Keys.onPressed: event => keys.scroll(event)

    Column {
        id: column
        x: root.margin
        y: root.margin
        width: root.innerWidth
        spacing: 14

        Grid {
            id: cells

            readonly property real cellWidth: (width - (columns - 1) * root.gap) / columns

            width: parent.width
            columns: 3
            spacing: root.gap
            layoutDirection: root.LayoutMirroring.enabled ? Qt.RightToLeft : Qt.LeftToRight

            StatCell {
                width: cells.cellWidth
                label: qsTr("Today")
                value: root.model.today
            }
            StatCell {
                width: cells.cellWidth
                label: qsTr("This week")
                value: root.model.thisWeek
            }
            StatCell {
                width: cells.cellWidth
                label: qsTr("All time")
                value: root.model.allTime
            }
            StatCell {
                width: cells.cellWidth
                label: qsTr("Streak")
                value: root.model.streak
            }
            StatCell {
                width: cells.cellWidth
                label: qsTr("Best streak")
                value: root.model.bestStreak
            }
            StatCell {
                width: cells.cellWidth
                label: qsTr("Avg time")
                value: root.model.averageTime
            }
        }

        RankCard {
            width: parent.width
            model: root.model
        }

        Grid {
            id: records

            width: parent.width
            columns: 2
            spacing: root.gap
            visible: root.model.hasRecords
            layoutDirection: cells.layoutDirection

            RecordCard {
                width: (records.width - root.gap) / 2
                symbol: "bolt.fill"
                label: qsTr("Fastest")
                record: root.model.fastest
                visible: record.duration !== ""
            }
            RecordCard {
                width: (records.width - root.gap) / 2
                symbol: "hourglass"
                label: qsTr("Slowest")
                record: root.model.slowest
                visible: record.duration !== ""
            }
        }

        NoRecords {
            width: parent.width
            visible: !root.model.hasRecords
        }

        Grid {
            id: awards

            width: parent.width
            columns: 2
            spacing: root.gap
            layoutDirection: cells.layoutDirection
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Awards")

            Repeater {
                model: root.model.awardCount

                AwardTile {
                    required property int index

                    width: (awards.width - root.gap) / 2
                    award: root.model.awards[index]
                }
            }
        }
    }

    ScrollHandle {
        parent: root
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        flickable: root
    }
}

import QtQuick
import Quillo

/// Twinkles around a round badge for a while after it has come up, and then stays. Where motion is not wanted it only
/// stays.
Item {
    id: root

    readonly property bool twinkles: Window.visibility !== Window.Hidden && !Theme.reduceMotion

    width: 44
    height: 44

    Repeater {
        model: [
            {
                x: 34,
                y: 8,
                size: 12
            },
            {
                x: 7,
                y: 35,
                size: 9
            },
            {
                x: 36,
                y: 34,
                size: 7
            }
        ]

        Icon {
            id: star

            required property var modelData
            required property int index

            x: modelData.x - size / 2
            y: modelData.y - size / 2
            size: modelData.size
            symbol: "sparkles"
            color: Theme.todayOrange

            SequentialAnimation {
                running: root.twinkles
                loops: 5
                onStopped: {
                    star.scale = 1;
                    star.opacity = 1;
                }

                PauseAnimation {
                    duration: star.index * 150
                }
                ParallelAnimation {
                    NumberAnimation {
                        target: star
                        property: "scale"
                        from: 1
                        to: 0.4
                        duration: 350
                        easing.type: Easing.InOutQuad
                    }
                    NumberAnimation {
                        target: star
                        property: "opacity"
                        from: 1
                        to: 0.2
                        duration: 350
                    }
                }
                ParallelAnimation {
                    NumberAnimation {
                        target: star
                        property: "scale"
                        to: 1
                        duration: 350
                        easing.type: Easing.InOutQuad
                    }
                    NumberAnimation {
                        target: star
                        property: "opacity"
                        to: 1
                        duration: 350
                    }
                }
                PauseAnimation {
                    duration: (2 - star.index) * 150
                }
            }
        }
    }
}

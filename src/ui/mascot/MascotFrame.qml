import QtQuick

/// One picture of the mascot, loaded when it is first wanted and kept from then on.
Image {
    id: root

    required property url picture
    required property bool wanted
    required property real size

    /// It is wanted and there.
    readonly property bool shown: wanted && status === Image.Ready

    anchors.fill: parent
    visible: shown
    sourceSize: Qt.size(Math.round(size * Screen.devicePixelRatio), Math.round(size * Screen.devicePixelRatio))
    Accessible.ignored: true

    onWantedChanged: load()
    Component.onCompleted: load()

    function load() {
        if (wanted)
            source = picture;
    }
}

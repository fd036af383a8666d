import QtQuick
import Quillo

/// A symbol in one colour.
Image {
    id: root

    required property string symbol
    property color color: Theme.text
    /// Edge of the square.
    property real size: 16

    readonly property int pixels: Math.max(1, Math.round(size * Screen.devicePixelRatio))

    width: size
    height: size
    sourceSize: Qt.size(pixels, pixels)
    source: symbol ? "image://symbol/" + symbol + "/" + digits(color) : ""
    Accessible.ignored: true

    /// The colour as rrggbbaa; as text it is #rrggbb, or #aarrggbb if something shines through.
    function digits(color) {
        const text = color.toString();
        return text.length > 7 ? text.slice(3) + text.slice(1, 3) : text.slice(1) + "ff";
    }
}

import QtQuick
import Quillo

/// Counts the notches that a wheel is turned over its parent.
WheelHandler {
    signal stepped(int steps)

    property int turned: 0

    acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
    onWheel: event => {
        // One notch, in eighths of a degree: https://doc.qt.io/qt-6/qwheelevent.html#angleDelta
        const notch = 120;
        turned += event.angleDelta.y;
        const steps = Math.trunc(turned / notch);
        turned -= steps * notch;
        if (steps !== 0)
            stepped(steps);
    }
}

import QtQuick
import Quillo

/// A spring of response 0.18 s and damping fraction 0.7, from rest: it swings 4.6 % past its end and has come to rest,
/// to one hundredth, after 0.19 s.
NumberAnimation {
    duration: 190
    easing.type: Easing.OutBack
    easing.overshoot: 1.12
}

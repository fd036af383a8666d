import QtQuick

/// A spring described by how long it takes and how soon it comes to rest.
///
/// Qt's own description is the acceleration and the braking of one step of 16 ms; for a mass of 1 on a spring of
/// angular frequency 2 pi / response they are its square and twice the damping fraction times it.
SpringAnimation {
    /// Period of the spring without damping, in seconds.
    required property real response
    /// 0 swings for ever, 1 comes to rest without swinging past its end.
    required property real dampingFraction

    readonly property real step: 0.016
    readonly property real frequency: 2 * Math.PI / response

    spring: frequency * frequency * step
    damping: 2 * dampingFraction * frequency * step
    epsilon: 0.1
}

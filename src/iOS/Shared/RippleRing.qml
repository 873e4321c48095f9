// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// One ring that grows from the size of a marker and fades, again and again. It stands still until its delay has
/// passed, and moves only while its window can be seen. With reduced motion the ring without a delay stays, a little
/// larger than its marker; the others are away. Centre it on the marker.
Item {
    id: root

    /// Seconds before the first growth.
    property real delay: 0
    /// Diameter at rest.
    required property real baseSize
    readonly property real growth: 3.2
    readonly property real stillGrowth: 1.5
    readonly property real restScale: (Theme.reducedMotion ? root.stillGrowth : 1) / root.growth
    readonly property bool isShown: Window.visibility !== Window.Hidden && Window.visibility !== Window.Minimized
    readonly property bool isMoving: visible && isShown && !Theme.reducedMotion

    Accessible.ignored: true

    // Painted at its largest, so that it is sharp all the way.
    RippleCircle {
        id: circle

        anchors.centerIn: parent
        diameter: root.baseSize * root.growth
        lineWidth: 2 * root.growth
        visible: !Theme.reducedMotion || root.delay === 0
        scale: root.restScale
    }
    SequentialAnimation {
        running: root.isMoving
        onStopped: root.rest()

        PauseAnimation { duration: root.delay * 1000 }
        ParallelAnimation {
            loops: Animation.Infinite

            NumberAnimation {
                target: circle
                property: "scale"
                from: 1 / root.growth
                to: 1
                duration: Theme.ripple
                easing.type: Easing.BezierSpline
                easing.bezierCurve: Theme.easeOutCurve // qmllint disable
            }
            NumberAnimation {
                target: circle
                property: "opacity"
                from: 1
                to: 0
                duration: Theme.ripple
                easing.type: Easing.BezierSpline
                easing.bezierCurve: Theme.easeOutCurve // qmllint disable
            }
        }
    }

    /// It begins again from the beginning.
    function rest(): void {
        circle.scale = Qt.binding(() => root.restScale)
        circle.opacity = 1
    }
}

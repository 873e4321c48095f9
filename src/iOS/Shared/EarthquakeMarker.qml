// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A marker that moves: the latest one with its rings, or the selected one. Its place is its centre.
Item {
    id: root

    required property real magnitude
    required property bool isSelected
    required property bool isLatest
    readonly property real markerSize: disc.diameter
    /// It grows after it is there, so that it is seen to grow.
    property bool isReady: false
    readonly property bool isGrown: isSelected && isReady
    /// On its way from one size to the other.
    property real growth: isGrown ? 1 : 0

    /// It has shrunk to the size of all others.
    signal settled

    scale: isGrown ? disc.selectedScale : 1
    Component.onCompleted: isReady = true
    onIsGrownChanged: settleAtOnce()

    Behavior on scale {
        NumberAnimation {
            duration: Theme.springMarker
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Theme.springCurve // qmllint disable
        }
    }
    Behavior on growth {
        NumberAnimation {
            duration: Theme.springSelect
            easing.type: Easing.BezierSpline
            easing.bezierCurve: Theme.springCurve // qmllint disable
            onRunningChanged: root.settleWhenStopped(running)
        }
    }

    Repeater {
        model: root.isLatest ? [0, 0.65, 1.3] : []
        delegate: RippleRing {
            required property real modelData

            objectName: "ripple"
            delay: modelData
            baseSize: root.markerSize
        }
    }
    MarkerDisc {
        id: disc

        anchors.centerIn: parent
        magnitude: root.magnitude
        growth: root.growth
        edge: Theme.categoryEdge
    }
    Rectangle {
        anchors.centerIn: parent
        width: root.markerSize + border.width
        height: width
        radius: width / 2
        visible: root.isGrown
        color: "transparent"
        border.width: disc.selectedLine
        border.color: Theme.markerLine
    }

    function settleWhenStopped(running: bool): void {
        if (!running && !root.isGrown)
            root.settled()
    }

    function settleAtOnce(): void {
        if (Theme.springSelect === 0 && !root.isGrown)
            root.settled()
    }
}

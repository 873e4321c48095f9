// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The event on its map: a disc that stands on its place, with a star, and rings that go out from it.
Item {
    id: root

    required property color color
    /// Where the event is, in the map's pixels.
    required property point place
    /// Of the disc with its line.
    required property real standingHeight
    readonly property real line: 2
    readonly property real diameter: standingHeight - line

    x: place.x - diameter / 2
    y: place.y - diameter
    width: diameter
    height: diameter

    RippleRing {
        anchors.centerIn: parent
        baseSize: root.diameter
    }
    RippleRing {
        anchors.centerIn: parent
        baseSize: root.diameter
        delay: 0.65
    }
    RippleRing {
        anchors.centerIn: parent
        baseSize: root.diameter
        delay: 1.3
    }
    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: root.color
    }
    // Half of the line lies within the disc, half around it.
    Rectangle {
        anchors.fill: parent
        anchors.margins: -border.width / 2
        radius: width / 2
        color: "transparent"
        border.width: root.line
        border.color: Theme.markerLine
    }
    Icon {
        anchors.centerIn: parent
        width: 10
        height: 10
        name: "star.fill"
        color: Theme.markerLine
    }
}

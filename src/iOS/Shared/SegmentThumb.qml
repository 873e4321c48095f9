// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// What lies under the chosen segment, and glides to the next.
Item {
    id: root

    Behavior on x {
        NumberAnimation { duration: Theme.reducedMotion ? 0 : Theme.quick }
    }
    Behavior on width {
        NumberAnimation { duration: Theme.reducedMotion ? 0 : Theme.quick }
    }

    Shadow {
        anchors.fill: parent
        radius: Theme.radiusSegment
        blur: 2
        offset: 1
        color: Theme.thumbShadow
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: -0.5
        radius: Theme.radiusSegment + 0.5
        color: Theme.controlBorder
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusSegment
        color: Theme.segmentThumb
    }
}

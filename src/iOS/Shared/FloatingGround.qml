// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// Ground of what floats over a window: shadow, fine edge, fill.
Item {
    id: root

    property real radius: Theme.radiusPopover
    property color color: Theme.popover
    property ShadowStyle shadowStyle: Theme.shadowPopover

    Shadow {
        anchors.fill: parent
        radius: root.radius
        blur: root.shadowStyle.blur
        offset: root.shadowStyle.offset
        color: root.shadowStyle.color
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: -0.5
        radius: root.radius + 0.5
        color: Theme.floatEdge
    }
    Rectangle {
        anchors.fill: parent
        radius: root.radius
        color: root.color
    }
}

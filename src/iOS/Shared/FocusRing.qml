// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The ring round what has the keyboard's focus. Outside with a gap, or `inside` the edge.
Rectangle {
    id: root

    /// Whether it shows. Bind it to visualFocus: a press of the pointer shows no ring.
    required property bool shown
    property bool inside: false
    /// Corner radius of what it surrounds.
    property real around: Theme.radiusControl
    readonly property real distance: inside ? 0 : Theme.focusGap + Theme.focusWidth

    anchors.fill: parent
    anchors.margins: -distance
    radius: around + distance
    color: "transparent"
    border.width: Theme.focusWidth
    border.color: Theme.focusRing
    visible: opacity > 0
    opacity: shown ? 1 : 0

    Behavior on opacity {
        NumberAnimation { duration: Theme.quick }
    }
}

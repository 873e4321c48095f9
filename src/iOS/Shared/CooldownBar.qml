// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// How much of a wait is over: a small capsule that fills up.
Rectangle {
    id: root

    /// From 0 to 1.
    required property real progress

    implicitWidth: 20
    implicitHeight: 3
    radius: height / 2
    color: Theme.cooldownTrack

    Rectangle {
        width: root.width * Math.max(0, Math.min(1, root.progress))
        height: root.height
        radius: root.radius
        color: Theme.success

        Behavior on width {
            // A wait that begins is empty at once.
            enabled: root.visible
            NumberAnimation { duration: Theme.reducedMotion ? 0 : Theme.cooldown }
        }
    }
}

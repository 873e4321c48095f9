// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import orvalia.Shared

/// Something is under way: eight spokes that turn by steps. Stands still while its window is hidden, and with reduced
/// motion.
Item {
    id: root

    property real size: Theme.iconHead
    /// What is under way, for a screen reader.
    required property string name
    property int step: 0

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Animation
    Accessible.name: name

    Timer {
        interval: 900 / 8
        repeat: true
        running: root.visible && !Theme.reducedMotion && root.Window.visibility !== Window.Hidden
            && root.Window.visibility !== Window.Minimized
        onTriggered: root.step = (root.step + 1) % 8
    }
    Repeater {
        model: 8

        Rectangle {
            id: spoke

            required property int index
            /// 0 for the newest spoke, 7 for the one that fades out.
            readonly property int age: (root.step - index + 8) % 8

            x: (root.size - width) / 2
            width: root.size * 0.1
            height: root.size * 0.27
            radius: width / 2
            color: Theme.secondary
            opacity: 1 - age * 0.115
            antialiasing: true
            transform: Rotation {
                origin.x: spoke.width / 2
                origin.y: root.size / 2
                angle: spoke.index * 45
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A switch. It shows `on` and never changes it: a press only asks.
PressableControl {
    id: root

    required property bool on

    /// The user wants it so.
    signal requested(bool on)

    implicitWidth: 40
    implicitHeight: 24
    opacity: enabled ? 1 : Theme.disabledOpacity
    onClicked: root.requested(!root.on)
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: on
    Accessible.onToggleAction: root.pressForReader()
    background: Rectangle {
        radius: height / 2
        color: root.on ? Theme.accent : Theme.systemFillStrong
        border.width: root.on ? 0 : Theme.hair
        border.color: Theme.controlBorder

        Behavior on color {
            ColorAnimation { duration: Theme.quick }
        }
        FocusRing {
            shown: root.visualFocus
            around: parent.radius
        }
    }
    contentItem: Item {
        Shadow {
            anchors.fill: knob
            radius: knob.radius
            blur: 2
            offset: 1
            color: Theme.knobShadow
        }
        Rectangle {
            id: knob

            x: root.on ? parent.width - width - 3 : 3
            y: 3
            width: 18
            height: 18
            radius: 9
            color: Theme.switchKnob

            Behavior on x {
                NumberAnimation { duration: Theme.reducedMotion ? 0 : Theme.quick }
            }
        }
    }
}

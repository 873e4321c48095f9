// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A row of a form that is one button.
PressableControl {
    id: root

    property bool destructive: false

    width: parent ? parent.width : 0
    implicitHeight: Theme.formRowHeight
    horizontalPadding: 14
    opacity: enabled ? 1 : Theme.disabledOpacity
    background: StateTint {
        radius: Theme.radiusGroup
        hovered: root.hovered
        pressed: root.pressed

        FocusRing {
            shown: root.visualFocus
            inside: true
            around: Theme.radiusGroup
        }
    }
    contentItem: PlainText {
        text: root.text
        color: root.destructive ? Theme.destructive : Theme.accent
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The ordinary button.
PressableControl {
    id: root

    property bool destructive: false

    implicitHeight: Theme.buttonHeight
    horizontalPadding: 14
    opacity: enabled ? 1 : Theme.disabledOpacity
    background: BorderedGround {
        hovered: root.hovered
        pressed: root.pressed
        focused: root.visualFocus
    }
    contentItem: PlainText {
        text: root.text
        color: root.destructive ? Theme.destructive : Theme.primary
        font.weight: Font.Medium
        verticalAlignment: Text.AlignVCenter
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}

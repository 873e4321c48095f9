// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A button that is only its text.
PressableControl {
    id: root

    property bool destructive: false
    property TextStyle textStyle: Theme.body
    property int weight: Font.DemiBold
    property color color: destructive ? Theme.destructive : Theme.accent

    implicitHeight: Theme.buttonHeight
    horizontalPadding: Theme.s
    opacity: enabled ? 1 : Theme.disabledOpacity
    background: StateTint {
        hovered: root.hovered
        pressed: root.pressed

        FocusRing {
            shown: root.visualFocus
            inside: true
        }
    }
    contentItem: PlainText {
        text: root.text
        textStyle: root.textStyle
        color: root.color
        font.weight: root.weight
        verticalAlignment: Text.AlignVCenter
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}

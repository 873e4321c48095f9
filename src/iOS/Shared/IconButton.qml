// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A button of the toolbar: one icon, with its name in a tool tip.
PressableControl {
    id: root

    required property string iconName
    /// Something is in force: the icon in accent (give it a filled one).
    property bool active: false
    /// Its popover or menu is open.
    property bool open: false
    property real iconSize: Theme.icon
    property real size: Theme.hitSize
    readonly property color iconColor: !enabled ? Theme.tertiary
        : active ? Theme.accent : pressed || open ? Theme.primary : Theme.secondary

    implicitWidth: size
    implicitHeight: size
    background: StateTint {
        hovered: root.hovered && root.enabled
        pressed: root.pressed || root.open

        FocusRing {
            shown: root.visualFocus
            inside: true
        }
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            width: root.iconSize
            height: root.iconSize
            name: root.iconName
            color: root.iconColor
        }
    }

    TextTip {
        text: root.text
        shown: (root.hovered || root.visualFocus) && !root.open && !root.pressed
    }
}

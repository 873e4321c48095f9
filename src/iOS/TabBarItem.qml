// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A tab in the bar below the screens: its icon over its name.
PressableControl {
    id: root

    required property string iconName
    required property bool isSelected
    readonly property color ink: isSelected ? Theme.accent : Theme.secondary

    implicitHeight: Theme.toolbarHeight
    Accessible.role: Accessible.PageTab
    Accessible.selectable: true
    Accessible.selected: isSelected

    background: Item {
        StateTint {
            anchors.fill: parent
            anchors.margins: Theme.xxs
            radius: Theme.radiusControl
            hovered: root.hovered
            pressed: root.pressed

            FocusRing {
                shown: root.visualFocus
                inside: true
            }
        }
    }
    contentItem: Item {
        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            y: Theme.s
            name: root.iconName
            color: root.ink
        }
        PlainText {
            anchors.horizontalCenter: parent.horizontalCenter
            y: Theme.s + Theme.icon + Theme.xxs
            width: Math.min(implicitWidth, parent.width)
            text: root.text
            textStyle: Theme.caption2
            font.weight: root.isSelected ? Font.DemiBold : Font.Normal
            color: root.ink
            Accessible.ignored: true
        }
    }
}

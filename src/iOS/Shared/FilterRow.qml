// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// One choice of the filter popover, over its whole width, with a check mark when it is the chosen one.
PressableControl {
    id: root

    required property bool isChosen

    leftPadding: Theme.l
    rightPadding: Theme.l
    topPadding: 6
    bottomPadding: 6
    Accessible.role: Accessible.RadioButton
    Accessible.checkable: true
    Accessible.checked: isChosen
    Accessible.onToggleAction: root.pressForReader()
    background: StateTint {
        radius: 0
        hovered: root.hovered
        pressed: root.pressed

        FocusRing {
            shown: root.visualFocus
            inside: true
            around: 0
        }
    }
    contentItem: Item {
        implicitHeight: label.height

        PlainText {
            id: label

            width: parent.width - check.width
            text: root.text
            Accessible.ignored: true
        }
        Icon {
            id: check

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.iconField
            height: Theme.iconField
            name: "checkmark"
            color: Theme.accent
            visible: root.isChosen
        }
    }
}

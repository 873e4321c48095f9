// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// A section in the sidebar. A click, Space and Enter choose it; Ctrl and a click on the selected one, or Ctrl and
/// Space, take the selection away.
T.ItemDelegate {
    id: root

    required property string label
    required property string iconName
    required property bool isSelected
    required property bool isFocused

    signal selected
    signal deselected

    function choose(takesAway: bool): void {
        if (takesAway && root.isSelected)
            root.deselected()
        else
            root.selected()
    }

    /// What a click does, by the keyboard or a screen reader.
    function press(takesAway: bool): void {
        root.choose(takesAway)
        root.clicked()
    }

    implicitHeight: Theme.sidebarRowHeight
    leftPadding: Theme.s
    rightPadding: Theme.s
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: label
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: root.press(false)
    Keys.onSpacePressed: event => press((event.modifiers & Qt.ControlModifier) !== 0)
    Keys.onReturnPressed: press(false)
    Keys.onEnterPressed: press(false)

    TapHandler {
        acceptedModifiers: Qt.ControlModifier
        onTapped: root.choose(true)
    }
    TapHandler {
        acceptedModifiers: Qt.NoModifier
        onTapped: root.choose(false)
    }

    background: StateTint {
        hovered: root.hovered && !root.isSelected
        pressed: root.pressed && !root.isSelected

        Rectangle {
            anchors.fill: parent
            radius: Theme.radiusControl
            color: root.Window.active ? Theme.selection : Theme.selectionInactive
            visible: root.isSelected
        }
        FocusRing {
            shown: root.isFocused
            inside: true
        }
    }
    contentItem: Item {
        Icon {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            name: root.iconName
            color: root.isSelected ? Theme.accent : Theme.secondary
        }
        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            x: icon.width + 10
            width: parent.width - x
            text: root.label
            font.weight: root.isSelected ? Font.DemiBold : Font.Normal
            Accessible.ignored: true
        }
    }
}

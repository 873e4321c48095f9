// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// An entry of a menu, or the title of a submenu. `text` is its name.
T.MenuItem {
    id: root

    /// The key that does the same, written out; empty for none.
    property string shortcutText: ""
    /// Ticked. The entry never ticks itself.
    property bool chosen: false
    /// Room for a tick in front. Set it alike on all entries of a menu.
    property bool hasTick: false

    function press(): void {
        if (root.subMenu)
            root.subMenu.open()
        else
            root.triggered() // at which the menu closes
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.menuEntryHeight
    horizontalPadding: 10
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity
    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.checkable: hasTick
    Accessible.checked: chosen
    Accessible.onPressAction: root.press()
    background: Rectangle {
        radius: Theme.radiusMenuEntry
        color: root.highlighted ? Theme.selection : "transparent"
    }
    contentItem: Item {
        implicitWidth: label.x + label.implicitWidth
            + (root.shortcutText.length > 0 ? shortcut.implicitWidth + 28 : root.subMenu ? Theme.iconTiny + 28 : 0)

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.iconField
            height: Theme.iconField
            name: "checkmark"
            color: Theme.accent
            visible: root.chosen
        }
        PlainText {
            id: label

            x: root.hasTick ? Theme.iconField + Theme.s : 0
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            Accessible.ignored: true
        }
        PlainText {
            id: shortcut

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: root.shortcutText
            textStyle: Theme.caption
            color: Theme.secondary
            visible: root.shortcutText.length > 0
            Accessible.ignored: true
        }
        Icon {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.iconTiny
            height: Theme.iconTiny
            name: "chevron.right"
            color: Theme.tertiary
            visible: root.subMenu !== null
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// One choice in a picker's menu.
PressableControl {
    id: root

    required property int index
    required text
    required property color dot
    property bool ticked: false
    property bool highlighted: false

    implicitHeight: Theme.menuEntryHeight
    horizontalPadding: 10
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.MenuItem
    Accessible.checkable: true
    Accessible.checked: ticked
    background: Rectangle {
        radius: Theme.radiusMenuEntry
        color: root.highlighted ? Theme.selection : "transparent"
    }
    contentItem: Item {
        implicitWidth: label.x + label.implicitWidth

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.iconField
            height: Theme.iconField
            name: "checkmark"
            color: Theme.accent
            visible: root.ticked
        }
        CategoryDot {
            id: dot

            x: Theme.iconField + Theme.s
            anchors.verticalCenter: parent.verticalCenter
            color: root.dot
        }
        PlainText {
            id: label

            x: dot.x + dot.width + (dot.width > 0 ? Theme.s : 0)
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - x
            text: root.text
            Accessible.ignored: true
        }
    }
}

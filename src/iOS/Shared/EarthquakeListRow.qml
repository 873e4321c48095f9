// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// One row of an EarthquakeList: the event on its ground, with the arrow of a link.
T.ItemDelegate {
    id: root

    required property double magnitude
    required property string location
    required property string dateText
    required property string depthText
    /// The whole row, for a screen reader.
    required property string sentence
    required property bool isLink
    required property bool isChosen
    /// It is where the keyboard's focus is.
    required property bool isFocused
    required property bool showsDivider

    implicitHeight: Theme.listRowHeight
    leftPadding: Theme.xl
    rightPadding: Theme.xl
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.ListItem
    Accessible.name: sentence
    Accessible.selectable: true
    Accessible.selected: isChosen

    background: Item {
        StateTint {
            anchors.fill: parent
            anchors.leftMargin: Theme.s
            anchors.rightMargin: Theme.s
            hovered: root.hovered && !root.isChosen
            pressed: root.pressed && !root.isChosen

            Rectangle {
                anchors.fill: parent
                radius: Theme.radiusControl
                color: root.Window.active ? Theme.selection : Theme.selectionInactive
                visible: root.isChosen
            }
            FocusRing {
                shown: root.isFocused
                inside: true
            }
        }
        Divider {
            anchors.bottom: parent.bottom
            x: root.leftPadding + row.textX
            width: parent.width - x - Theme.xl
            visible: root.showsDivider
        }
    }
    contentItem: Item {
        EarthquakeRowView {
            id: row

            anchors.fill: parent
            anchors.rightMargin: root.isLink ? Theme.iconTiny + Theme.m : 0
            magnitude: root.magnitude
            location: root.location
            dateText: root.dateText
            depthText: root.depthText
        }
        Icon {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.iconTiny
            height: Theme.iconTiny
            name: "chevron.right"
            color: Theme.tertiary
            visible: root.isLink
        }
    }
}

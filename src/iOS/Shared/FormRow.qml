// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A row of a form: an icon, a label, and a control at the end.
Item {
    id: root

    required property string label
    property string iconName: ""
    default property alias control: trailing.data

    width: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.formRowHeight, Math.max(text.implicitHeight, trailing.height) + Theme.m)

    Divider {
        x: 14
        width: root.width - 28
        visible: !root.Positioner.isFirstItem
    }
    Icon {
        id: icon

        x: 14
        anchors.verticalCenter: parent.verticalCenter
        name: root.iconName
        color: Theme.accent
        visible: root.iconName.length > 0
    }
    PlainText {
        id: text

        x: icon.visible ? icon.x + icon.width + Theme.m : 14
        width: trailing.x - x - Theme.m
        anchors.verticalCenter: parent.verticalCenter
        wrapMode: Text.Wrap
        text: root.label
    }
    Row {
        id: trailing

        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.s
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Ajustes
import orvalia.Shared

/// One permission: what it is, what it is for, and the answer.
FormCell {
    id: root

    required property string iconName
    required property string title
    required property string purpose
    required property PermissionChoice permission

    Item {
        width: parent.width
        height: Math.max(words.height, picker.height)

        Icon {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            name: root.iconName
            color: Theme.accent
        }
        Column {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            x: icon.width + Theme.m
            width: picker.x - x - Theme.m

            PlainText {
                width: parent.width
                text: root.title
            }
            PlainText {
                width: parent.width
                text: root.purpose
                textStyle: Theme.caption
                color: Theme.secondary
            }
        }
        Picker {
            id: picker

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: root.title
            choices: root.permission.choices
            current: root.permission.current
            onRequested: (row) => root.permission.current = row
        }
    }
}

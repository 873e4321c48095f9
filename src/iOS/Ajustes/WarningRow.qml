// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// Says that a permission is missing, and offers the way to change it.
FormCell {
    id: root

    required property string iconName
    required property color iconColor
    required property string title
    required property string detail
    required property color tint

    signal settingsRequested

    Accessible.role: Accessible.AlertMessage
    Accessible.name: title
    Accessible.description: detail

    Item {
        width: parent.width
        height: Math.max(words.height, button.height)

        Icon {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            name: root.iconName
            color: root.iconColor
        }
        Column {
            id: words

            anchors.verticalCenter: parent.verticalCenter
            x: icon.width + Theme.m
            width: button.x - x - Theme.m
            spacing: Theme.xxs

            PlainText {
                width: parent.width
                text: root.title
                textStyle: Theme.subheadline
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
            }
            PlainText {
                width: parent.width
                text: root.detail
                textStyle: Theme.caption
                color: Theme.secondary
                wrapMode: Text.Wrap
            }
        }
        PlainButton {
            id: button

            anchors.right: parent.right
            anchors.rightMargin: -Theme.xs
            anchors.verticalCenter: parent.verticalCenter
            text: Texts.localized("settings.openSettings", "Open Settings")
            textStyle: Theme.caption
            color: root.tint
            onClicked: root.settingsRequested()
        }
    }
}

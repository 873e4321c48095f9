// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// What a screen says in place of its content: icon, title and a sentence, a little above the middle of its space.
Item {
    id: root

    required property string iconName
    required property string title
    property string description: ""

    Accessible.role: Accessible.StaticText
    Accessible.name: description.length > 0 ? title + ". " + description : title

    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.max(Theme.l, Math.round((root.height - height) / 2 - Theme.xl))
        width: Math.min(360, root.width - 2 * Theme.l)

        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Theme.iconEmpty
            height: Theme.iconEmpty
            name: root.iconName
            color: Theme.tertiary
        }
        Item { width: 1; height: Theme.m }
        PlainText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.title
            textStyle: Theme.title2
            Accessible.ignored: true
        }
        Item { width: 1; height: 6; visible: root.description.length > 0 }
        PlainText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.description
            color: Theme.secondary
            visible: root.description.length > 0
            Accessible.ignored: true
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// One piece of advice.
Item {
    id: root

    required property string iconName
    required property string title
    required property string detail
    readonly property real iconColumn: 28

    implicitHeight: words.implicitHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: title + ". " + detail

    Icon {
        x: (root.iconColumn - width) / 2
        name: root.iconName
        color: Theme.warningIcon
    }
    Column {
        id: words

        x: root.iconColumn + Theme.m
        width: root.width - x
        spacing: Theme.xxs

        PlainText {
            width: parent.width
            wrapMode: Text.Wrap
            textStyle: Theme.subheadline
            font.weight: Font.DemiBold
            text: root.title
            Accessible.ignored: true
        }
        PlainText {
            width: parent.width
            wrapMode: Text.Wrap
            textStyle: Theme.caption
            color: Theme.secondary
            text: root.detail
            Accessible.ignored: true
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A card: a title and what it speaks of.
Rectangle {
    id: root

    required property string title
    default property alias content: inner.data

    implicitHeight: column.implicitHeight + 2 * Theme.l
    radius: Theme.radiusCard
    color: Theme.card
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Column {
        id: column

        x: Theme.l
        y: Theme.l
        width: root.width - 2 * Theme.l
        spacing: Theme.m

        PlainText {
            width: parent.width
            textStyle: Theme.title3
            font.weight: Font.Bold
            text: root.title
        }
        Item {
            id: inner

            width: parent.width
            implicitHeight: childrenRect.height
        }
    }
}

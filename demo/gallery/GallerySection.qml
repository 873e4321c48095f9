// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// One row of the gallery: its title at the left, controls beside one another.
Item {
    id: root

    required property string title
    default property alias content: row.data

    width: parent.width
    height: row.height + 28

    Divider { width: parent.width; color: Theme.divider }
    PlainText {
        y: 18
        width: 120
        text: root.title
        textStyle: Theme.caption
        font.weight: Font.DemiBold
        color: Theme.secondary
    }
    Row {
        id: row

        x: 132
        y: 14
        spacing: 22
    }
}

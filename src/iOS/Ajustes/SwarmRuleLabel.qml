// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// One line of the swarm rules behind its bullet.
Row {
    id: root

    required property string text

    spacing: 6

    Icon {
        anchors.verticalCenter: parent.verticalCenter
        width: 5
        height: 5
        name: "circle.fill"
        color: Theme.secondary
    }
    PlainText {
        anchors.verticalCenter: parent.verticalCenter
        width: root.width - x
        text: root.text
        textStyle: Theme.caption
        color: Theme.secondary
    }
}

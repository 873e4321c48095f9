// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// How many events a period had.
Rectangle {
    id: root

    required property int count
    required property string label

    implicitHeight: column.implicitHeight + 2 * Theme.l
    radius: Theme.radiusPopover
    color: Theme.cardInner
    Accessible.role: Accessible.StaticText
    Accessible.name: label + ": " + count

    Column {
        id: column

        y: Theme.l
        width: root.width
        spacing: Theme.xs

        NumberText {
            objectName: "count"
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.count
            color: root.count === 0 ? Theme.secondary : Theme.primary
            font.family: Theme.fontFamily
            font.pixelSize: Theme.title.size
            font.weight: Font.Bold
            line: Theme.title.line
        }
        PlainText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            textStyle: Theme.caption
            color: Theme.secondary
            text: root.label
            Accessible.ignored: true
        }
    }
}

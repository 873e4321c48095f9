// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Detail
import orvalia.Shared

/// One field of the event: icon, what it is, and its value, with a divider towards the next.
Item {
    id: root

    required property string iconName
    required property string label
    required property string value
    property bool isLast: false
    readonly property real padding: 10

    implicitHeight: words.implicitHeight + 2 * padding + (isLast ? 0 : Theme.hair)
    Accessible.role: Accessible.Grouping
    Accessible.name: label

    Icon {
        x: (Theme.iconDetail - width) / 2
        y: root.padding + Theme.xxs
        name: root.iconName
        color: Theme.secondary
    }
    Column {
        id: words

        x: Theme.iconDetail + Theme.m
        y: root.padding
        width: root.width - x
        spacing: 1

        PlainText {
            width: parent.width
            textStyle: Theme.caption
            color: Theme.secondary
            text: root.label
        }
        SelectableText {
            objectName: "value"
            width: parent.width
            content: root.value
            Accessible.description: root.label
        }
    }
    Divider {
        anchors.bottom: parent.bottom
        width: root.width
        visible: !root.isLast
    }
}

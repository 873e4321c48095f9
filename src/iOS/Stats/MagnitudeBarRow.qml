// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared
import orvalia.Stats

/// The events of one category, beside those of the fullest.
Column {
    id: root

    required property magnitudeCategory category
    required property int count
    required property real fraction
    readonly property real barHeight: 12

    spacing: 5

    Item {
        width: root.width
        height: label.height

        CategoryDot {
            id: dot

            anchors.verticalCenter: parent.verticalCenter
            color: root.category.color
        }
        PlainText {
            id: label

            x: dot.width + Theme.s
            textStyle: Theme.subheadline
            text: root.category.label
        }
        PlainText {
            x: label.x + label.width + Theme.s
            anchors.verticalCenter: parent.verticalCenter
            textStyle: Theme.caption
            color: Theme.tertiary
            text: root.category.range
        }
        CountText {
            anchors.right: parent.right
            count: root.count
        }
    }
    ShareBar {
        objectName: "bar"
        width: root.width
        height: root.barHeight
        name: root.category.label
        fraction: root.count > 0 ? root.fraction : 0
        fill: root.category.color
        hasEdge: true
    }
}

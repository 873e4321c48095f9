// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared
import orvalia.Stats

/// The events of one band of depths, as a share of all.
Column {
    id: root

    required property string label
    required property string detail
    required property depthFigure figure
    required property color color
    readonly property real barHeight: 10

    spacing: Theme.xs

    Item {
        width: root.width
        height: name.height

        PlainText {
            id: name

            textStyle: Theme.subheadline
            text: root.label
        }
        PlainText {
            x: name.width + Theme.s
            anchors.verticalCenter: parent.verticalCenter
            textStyle: Theme.caption
            color: Theme.tertiary
            text: root.detail
        }
        CountText {
            anchors.right: parent.right
            count: root.figure.count
        }
    }
    ShareBar {
        objectName: "bar"
        width: root.width
        height: root.barHeight
        name: root.label
        fraction: root.figure.count > 0 ? root.figure.fraction : 0
        fill: root.color
    }
}

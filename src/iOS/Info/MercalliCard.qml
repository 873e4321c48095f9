// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// One band of the scale: a swatch with its range, its name and what it does. Grows with its text.
Rectangle {
    id: root

    required property magnitudeCategory category
    readonly property real padding: 14
    readonly property real swatchSize: 52

    implicitHeight: Math.max(swatchSize, words.implicitHeight) + 2 * padding
    radius: Theme.radiusSheet
    color: Qt.alpha(category.color, 0.08)
    border.width: Theme.hair
    border.color: Qt.alpha(category.color, 0.3)
    Accessible.role: Accessible.StaticText
    Accessible.name: category.label + ", " + category.range + ". " + category.description

    CategoryGround {
        x: root.padding
        y: root.padding
        width: root.swatchSize
        height: root.swatchSize
        radius: Theme.radiusControl
        color: root.category.color

        PlainText {
            anchors.centerIn: parent
            width: parent.width - 2 * Theme.xs
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            textStyle: Theme.swatch
            color: Theme.textOnSwatch
            text: root.category.range
            Accessible.ignored: true
        }
    }
    Column {
        id: words

        x: 2 * root.padding + root.swatchSize
        y: root.padding
        width: root.width - x - root.padding
        spacing: Theme.xs

        PlainText {
            width: parent.width
            textStyle: Theme.headline
            text: root.category.label
            Accessible.ignored: true
        }
        PlainText {
            width: parent.width
            wrapMode: Text.Wrap
            textStyle: Theme.subheadline
            color: Theme.secondary
            text: root.category.description
            Accessible.ignored: true
        }
    }
}

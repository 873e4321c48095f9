// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared
import orvalia.Stats

/// One active zone, with a divider towards the next.
Item {
    id: root

    required property int rank
    required property string displayName
    required property string coordinates
    required property int count
    required property string average
    required property bool isLast
    readonly property real rankWidth: 18
    readonly property real dividerInset: 32

    implicitHeight: words.implicitHeight + 2 * Theme.s + (isLast ? 0 : Theme.hair)
    Accessible.role: Accessible.StaticText
    Accessible.name: rank + ". " + DisplayText.oneLine(displayName) + ", " + coordinates + ", " + count + ", " + average

    NumberText {
        x: (root.rankWidth - width) / 2
        y: Theme.s + (words.height - height) / 2
        text: root.rank
        color: Theme.secondary
        font.family: Theme.fontFamily
        font.pixelSize: Theme.caption.size
        font.weight: Font.Bold
        line: Theme.caption.line
        Accessible.ignored: true
    }
    Column {
        id: words

        x: root.rankWidth + Theme.m
        y: Theme.s
        width: figures.x - x - Theme.m
        spacing: Theme.xxs

        OutsideText {
            width: parent.width
            textStyle: Theme.subheadline
            font.weight: Font.DemiBold
            content: root.displayName
            Accessible.ignored: true
        }
        PlainText {
            width: parent.width
            textStyle: Theme.caption
            color: Theme.tertiary
            text: root.coordinates
            Accessible.ignored: true
        }
    }
    Column {
        id: figures

        anchors.right: parent.right
        y: Theme.s
        spacing: Theme.xxs

        CountText {
            anchors.right: parent.right
            count: root.count
            color: Theme.primary
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        PlainText {
            anchors.right: parent.right
            textStyle: Theme.caption
            color: Theme.secondary
            text: root.average
            Accessible.ignored: true
        }
    }
    Divider {
        x: root.dividerInset
        anchors.bottom: parent.bottom
        width: root.width - x
        visible: !root.isLast
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A group of rows in a FormColumn, with a header above it and a footer below. Fill it with FormRow or FormCell.
Column {
    id: root

    property string header: ""
    property string footer: ""
    default property alias rows: rows.data

    width: parent ? parent.width - 2 * Theme.xl : 0
    topPadding: Positioner.isFirstItem ? 6 : 14
    Accessible.role: Accessible.Grouping
    Accessible.name: header

    PlainText {
        leftPadding: Theme.m
        bottomPadding: 6 + halfLeading
        width: root.width
        text: root.header
        textStyle: Theme.subheadline
        font.weight: Font.DemiBold
        color: Theme.secondary
        visible: root.header.length > 0
    }
    Rectangle {
        width: root.width
        height: rows.height
        radius: Theme.radiusGroup
        color: Theme.raised
        border.width: Theme.hair
        border.color: Theme.divider

        Column {
            id: rows

            width: parent.width
        }
    }
    PlainText {
        leftPadding: Theme.m
        rightPadding: Theme.m
        topPadding: 7 + halfLeading
        width: root.width
        wrapMode: Text.Wrap
        text: root.footer
        textStyle: Theme.caption
        color: Theme.secondary
        visible: root.footer.length > 0
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared
import orvalia.Stats

/// The strongest event of a period, or that there was none.
Item {
    id: root

    required property string periodLabel
    required property peakFigure event

    implicitHeight: Math.max(label.height, event.isPresent ? peak.height : none.height) + 2 * Theme.xxs

    PlainText {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        width: root.width - Theme.m - (root.event.isPresent ? peak.width : none.width)
        textStyle: Theme.subheadline
        color: Theme.secondary
        text: root.periodLabel
    }
    Column {
        id: peak

        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        width: Math.max(badge.width, Math.min(place.implicitWidth, root.width * 0.6))
        spacing: Theme.xxs
        visible: root.event.isPresent

        MagnitudeBadge {
            id: badge

            anchors.right: parent.right
            magnitude: root.event.magnitude
        }
        OutsideText {
            id: place

            width: parent.width
            horizontalAlignment: Text.AlignRight
            textStyle: Theme.caption
            color: Theme.secondary
            content: root.event.location
        }
    }
    PlainText {
        id: none

        objectName: "none"
        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        textStyle: Theme.subheadline
        color: Theme.tertiary
        text: Texts.localized("stats.destacados.none", "Sin datos")
        visible: !root.event.isPresent
    }
}

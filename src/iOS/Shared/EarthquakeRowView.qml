// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// An event as lists show it: magnitude, place, date and depth. A screen reader is told by the row that holds it, in
/// one sentence.
Item {
    id: root

    required property double magnitude
    required property string location
    required property string dateText
    required property string depthText
    /// Left edge of the texts.
    readonly property real textX: texts.x

    component Fact: Row {
        id: fact

        required property string iconName
        required property string text

        spacing: Theme.xs

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.iconTiny
            height: Theme.iconTiny
            name: fact.iconName
            color: Theme.secondary
        }
        PlainText {
            text: fact.text
            textStyle: Theme.caption
            color: Theme.secondary
            Accessible.ignored: true
        }
    }

    implicitHeight: texts.height + 2 * Theme.xs

    MagnitudeBadge {
        id: badge

        anchors.verticalCenter: parent.verticalCenter
        magnitude: root.magnitude
        Accessible.ignored: true
    }
    Column {
        id: texts

        anchors.verticalCenter: parent.verticalCenter
        x: badge.width + Theme.m
        width: root.width - x
        spacing: Theme.xxs

        OutsideText {
            objectName: "location"
            width: texts.width
            content: root.location
            textStyle: Theme.subheadline
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        Row {
            spacing: Theme.s

            Fact {
                iconName: "clock"
                text: root.dateText
            }
            Fact {
                iconName: "arrow.down"
                text: root.depthText
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A magnitude in a pill of its category's colour.
CategoryGround {
    id: root

    required property double magnitude
    readonly property magnitudeCategory category: MagnitudeScale.category(magnitude)

    implicitWidth: label.implicitWidth + 20
    implicitHeight: label.implicitHeight + 10
    radius: height / 2
    color: category.color
    Accessible.role: Accessible.StaticText
    Accessible.name: label.text

    NumberText {
        id: label

        anchors.centerIn: parent
        text: MagnitudeScale.text(root.magnitude)
        color: Theme.textOnCategory
        font.family: Theme.fontFamily
        font.pixelSize: Theme.callout.size
        font.weight: Font.Bold
        line: Theme.callout.line
    }
}

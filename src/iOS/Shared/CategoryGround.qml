// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A shape in a magnitude's colour, with the line inside its edge that keeps pale ones from vanishing.
Rectangle {
    id: root

    property bool hasEdge: true

    // Laid over the colour: a border of the shape itself would have the ground behind the shape shine through.
    Rectangle {
        anchors.fill: parent
        radius: root.radius
        color: "transparent"
        border.width: Theme.hair
        border.color: Theme.categoryEdge
        visible: root.hasEdge
    }
}

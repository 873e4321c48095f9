// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A share of its width, filled from the left; the fill glides to a new share.
Rectangle {
    id: root

    required property string name
    /// 0 to 1.
    required property real fraction
    required property color fill
    /// The fill carries the edge of magnitude colours.
    property bool hasEdge: false
    property real shownFraction: fraction
    readonly property int percent: Math.round(fraction * 100)

    Behavior on shownFraction {
        NumberAnimation {
            duration: Theme.easeBar
            easing.bezierCurve: Theme.easeOutCurve // qmllint disable
        }
    }

    radius: height / 2
    color: Theme.systemFill
    Accessible.role: Accessible.ProgressBar
    Accessible.name: name
    Accessible.description: percent + " %"

    CategoryGround {
        objectName: "fill"
        width: root.width * root.shownFraction
        height: root.height
        radius: height / 2
        color: root.fill
        hasEdge: root.hasEdge && width >= height
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The sections of a grouped form, under one another. A section that comes fades in, and its neighbours make room.
Column {
    id: root

    leftPadding: Theme.xl
    rightPadding: Theme.xl
    bottomPadding: Theme.xs
    /// Width of each section.
    readonly property real sectionWidth: width - leftPadding - rightPadding

    add: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.springSelect }
    }
    move: Transition {
        NumberAnimation { property: "y"; duration: Theme.springSelect; easing.type: Easing.OutQuad }
        // A section that is hidden while it still fades in must not stay half there.
        NumberAnimation { property: "opacity"; to: 1; duration: Theme.springSelect }
    }
}

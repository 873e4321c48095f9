// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The dot in front of a choice; nothing when transparent.
Rectangle {
    width: visible ? 10 : 0
    height: 10
    radius: 5
    border.width: Theme.hair
    border.color: Theme.categoryEdge
    visible: color.a > 0
}

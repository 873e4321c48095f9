// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// Ground of bordered buttons, pickers and date fields.
Item {
    id: root

    required property bool hovered
    required property bool pressed
    required property bool focused

    Shadow {
        anchors.fill: parent
        radius: Theme.radiusControl
        blur: Theme.shadowControl.blur
        offset: Theme.shadowControl.offset
        color: Theme.shadowControl.color
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.radiusControl
        color: Theme.control
        border.width: Theme.hair
        border.color: Theme.controlBorder
    }
    StateTint {
        anchors.fill: parent
        hovered: root.hovered
        pressed: root.pressed
    }
    FocusRing {
        shown: root.focused
    }
}

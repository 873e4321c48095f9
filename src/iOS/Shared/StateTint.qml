// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The tint that a control's ground takes under the pointer and while it is held.
Rectangle {
    id: root

    required property bool hovered
    required property bool pressed
    property color hoverColor: Theme.hover
    property color pressedColor: Theme.pressed

    radius: Theme.radiusControl
    color: pressed ? pressedColor : hovered ? hoverColor : Qt.alpha(hoverColor, 0)

    Behavior on color {
        ColorAnimation { duration: Theme.quick }
    }
}

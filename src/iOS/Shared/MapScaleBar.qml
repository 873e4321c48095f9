// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Map
import orvalia.Shared

/// How far some kilometres are on a map.
Item {
    id: root

    required property MapController controller
    readonly property color ink: Theme.dark ? "#D9E7EEF0" : "#D924313A"

    width: controller.scaleBarWidth
    height: 20
    Accessible.role: Accessible.StaticText
    Accessible.name: controller.scaleBarText

    PlainText {
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: Theme.xs }
        text: root.controller.scaleBarText
        textStyle: Theme.caption2
        color: root.ink
        style: Text.Outline
        styleColor: Theme.dark ? "#A60F212D" : "#A6C9DFEA"
        Accessible.ignored: true
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 1.5
        color: root.ink
    }
    Rectangle {
        anchors { left: parent.left; bottom: parent.bottom }
        width: 1.5
        height: 5
        color: root.ink
    }
    Rectangle {
        anchors { right: parent.right; bottom: parent.bottom }
        width: 1.5
        height: 5
        color: root.ink
    }
}

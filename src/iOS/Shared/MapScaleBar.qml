// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Map
import orvalia.Shared

/// How far some kilometres are on a map.
Item {
    id: root

    required property MapController controller

    width: controller.scaleBarWidth
    height: 20
    Accessible.role: Accessible.StaticText
    Accessible.name: controller.scaleBarText

    PlainText {
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: Theme.xs }
        text: root.controller.scaleBarText
        textStyle: Theme.caption2
        color: Theme.mapInk
        style: Text.Outline
        styleColor: Theme.mapHalo
        Accessible.ignored: true
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 1.5
        color: Theme.mapInk
    }
    Rectangle {
        anchors { left: parent.left; bottom: parent.bottom }
        width: 1.5
        height: 5
        color: Theme.mapInk
    }
    Rectangle {
        anchors { right: parent.right; bottom: parent.bottom }
        width: 1.5
        height: 5
        color: Theme.mapInk
    }
}

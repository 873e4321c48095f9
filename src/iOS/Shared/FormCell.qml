// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A row of a form with content of its own, which fills the row's width.
Item {
    id: root

    default property alias content: area.data

    width: parent ? parent.width : 0
    implicitHeight: Math.max(Theme.formRowHeight, area.childrenRect.height + 2 * Theme.m)

    Divider {
        x: 14
        width: root.width - 28
        visible: !root.Positioner.isFirstItem
    }
    Item {
        id: area

        x: 14
        width: root.width - 28
        height: childrenRect.height
        anchors.verticalCenter: parent.verticalCenter
    }
}

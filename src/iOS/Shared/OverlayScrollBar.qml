// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// The scroll bar of every list and page. It stays while the content overflows and widens under the pointer.
T.ScrollBar {
    id: root

    readonly property real thickness: hovered || pressed ? 9 : 6

    implicitWidth: 9 + 2 * padding
    implicitHeight: 9 + 2 * padding
    padding: 3
    minimumSize: Math.min(1, 32 / Math.max(1, orientation === Qt.Vertical ? height : width))
    visible: policy !== T.ScrollBar.AlwaysOff && size < 1
    contentItem: Item {
        Rectangle {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            width: root.orientation === Qt.Vertical ? root.thickness : parent.width
            height: root.orientation === Qt.Vertical ? parent.height : root.thickness
            radius: root.thickness / 2
            color: Theme.scrollThumb

            Behavior on width {
                enabled: root.orientation === Qt.Vertical
                NumberAnimation { duration: Theme.quick }
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// The scroll bar of every list and page. It widens under the pointer. Where the user can scroll by touch it fades
/// out when scrolling has ended; with a mouse alone it stays while the content overflows.
T.ScrollBar {
    id: root

    readonly property real thickness: hovered || pressed ? 9 : 6
    readonly property bool fades: Pointers.hasTouch()

    implicitWidth: 9 + 2 * padding
    implicitHeight: 9 + 2 * padding
    padding: 3
    minimumSize: Math.min(1, 32 / Math.max(1, orientation === Qt.Vertical ? height : width))
    visible: policy !== T.ScrollBar.AlwaysOff && size < 1
    contentItem: Item {
        opacity: root.active || !root.fades ? 1 : 0

        Behavior on opacity {
            SequentialAnimation {
                PauseAnimation { duration: root.active ? 0 : 800 }
                NumberAnimation { duration: Theme.quick }
            }
        }
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

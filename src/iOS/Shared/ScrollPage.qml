// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// Content taller than its place, moved by wheel, drag and keys. Its children stand in a column.
T.Control {
    id: root

    /// What it is, to a screen reader.
    required property string name
    default property alias content: column.data
    /// How far an arrow key moves.
    readonly property real line: 40
    readonly property real pageful: height - line

    function scrollBy(distance: real): void {
        flickable.contentY = Math.max(0, Math.min(flickable.contentHeight - height, flickable.contentY + distance))
    }

    implicitHeight: column.implicitHeight
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Pane
    Accessible.name: name
    Keys.onUpPressed: scrollBy(-line)
    Keys.onDownPressed: scrollBy(line)
    Keys.onSpacePressed: scrollBy(pageful)
    Keys.onPressed: event => {
        event.accepted = true
        if (event.key === Qt.Key_PageUp)
            scrollBy(-pageful)
        else if (event.key === Qt.Key_PageDown)
            scrollBy(pageful)
        else if (event.key === Qt.Key_Home)
            scrollBy(-flickable.contentHeight)
        else if (event.key === Qt.Key_End)
            scrollBy(flickable.contentHeight)
        else
            event.accepted = false
    }
    contentItem: Flickable {
        id: flickable

        contentWidth: width
        contentHeight: column.implicitHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: OverlayScrollBar {}

        Column {
            id: column

            width: flickable.width
        }
    }

    FocusRing {
        shown: root.visualFocus
        inside: true
    }
}

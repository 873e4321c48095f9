// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// Content taller than its place, moved by wheel, drag and keys. Its children stand in a column.
ControlItem {
    id: root

    /// What it is, to a screen reader.
    required property string name
    default property alias content: column.data
    /// How far an arrow key moves.
    readonly property real line: 40
    readonly property real pageful: height - line

    readonly property bool isScrollable: flickable.contentHeight > height

    function scrollBy(distance: real): void {
        flickable.contentY = Math.max(0, Math.min(flickable.contentHeight - height, flickable.contentY + distance))
    }

    /// Scrolls as little as shows the whole of what the keyboard's focus is on, with some air.
    function reveal(item: Item): void {
        const top = item.mapToItem(root, 0, 0).y - Theme.l
        const bottom = top + item.height + 2 * Theme.l
        if (top < 0)
            scrollBy(top)
        else if (bottom > height)
            scrollBy(Math.min(top, bottom - height))
    }

    implicitHeight: column.implicitHeight
    focusPolicy: isScrollable ? Qt.TabFocus : Qt.NoFocus
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
    // The key that brought the focus to an item is released there.
    Keys.onReleased: event => {
        const isTab = event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab
        if (isTab && root.Window.activeFocusItem !== root)
            reveal(root.Window.activeFocusItem)
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

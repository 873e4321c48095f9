// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// A menu. Fill it with ActionMenuItem, ActionMenuDivider, and ActionMenu for a submenu. Arrows move in it, Enter
/// chooses, Escape and a press outside close it.
T.Menu {
    id: root

    /// Width of the longest entry: the template does not look at its entries.
    function widest(): real {
        let width = 170
        for (let i = 0; i < root.count; ++i)
            width = Math.max(width, root.itemAt(i)?.implicitWidth ?? 0)
        return Math.ceil(width)
    }

    implicitWidth: widest() + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    margins: Theme.s
    padding: 5
    overlap: -2
    modal: true
    dim: false
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    delegate: ActionMenuItem {}
    enter: PopIn {}
    exit: PopOut {}
    background: FloatingGround {
        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.title
    }
    contentItem: ListView {
        implicitHeight: contentHeight
        model: root.contentModel
        currentIndex: root.currentIndex
        interactive: contentHeight > height
        clip: interactive
        boundsBehavior: Flickable.StopAtBounds
    }
    T.Overlay.modal: Item {}
}

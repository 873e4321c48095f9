// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// A sheet over the whole window: a head with its title, content that scrolls where it must, and a foot with buttons.
/// Bind `visible` to the state that opens it; Escape, Enter and the head's button only ask.
T.Popup {
    id: root

    required property string title
    property color ground: Theme.sheet
    /// A reading sheet: divider under the head, with a button to close.
    property bool hasCloseButton: false
    property real preferredWidth: 480
    /// From the sheet's sides to its title, and where its content begins.
    property real edge: Theme.xl
    property real maximumHeight: 2000
    default property alias content: page.content
    property alias buttons: foot.data
    readonly property real headHeight: Theme.toolbarHeight
    readonly property real footHeight: foot.children.length > 0 ? Theme.buttonHeight + 14 + Theme.xl : 0

    /// The user wants it gone.
    signal dismissRequested
    /// Enter was pressed where it presses nothing.
    signal confirmRequested

    parent: T.Overlay.overlay
    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round((parent.height - height) / 2) : 0
    width: parent ? Math.min(preferredWidth, parent.width - 2 * Theme.xxl) : preferredWidth
    height: Math.min(maximumHeight, (parent ? parent.height : maximumHeight) - 2 * Theme.xxl,
                     headHeight + page.implicitHeight + footHeight)
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    enter: PopIn {}
    exit: PopOut {}
    background: FloatingGround {
        radius: Theme.radiusSheet
        color: root.ground
        shadowStyle: Theme.shadowSheet
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title
    }
    T.Overlay.modal: Scrim {}
    contentItem: FocusScope {
        focus: true
        Keys.onEscapePressed: root.dismissRequested()
        Keys.onReturnPressed: root.confirmRequested()
        Keys.onEnterPressed: root.confirmRequested()

        PlainText {
            x: root.edge
            width: (closeButton.visible ? closeButton.x : parent.width) - x - Theme.m
            height: root.headHeight
            verticalAlignment: Text.AlignVCenter
            text: root.title
            textStyle: Theme.title3
        }
        IconButton {
            id: closeButton

            anchors.right: parent.right
            anchors.rightMargin: Theme.m
            y: (root.headHeight - height) / 2
            iconName: "xmark"
            text: Texts.localized("sheet.close", "Cerrar")
            visible: root.hasCloseButton
            onClicked: root.dismissRequested()
        }
        Divider {
            y: root.headHeight - height
            width: parent.width
            visible: root.hasCloseButton
        }
        ScrollPage {
            id: page

            y: root.headHeight
            width: parent.width
            height: parent.height - root.headHeight - root.footHeight
            // The keys that scroll are at hand where there is nothing else to do.
            focus: root.hasCloseButton
            name: root.title
        }
        Row {
            id: foot

            anchors.right: parent.right
            anchors.rightMargin: Theme.xl
            anchors.bottom: parent.bottom
            anchors.bottomMargin: Theme.xl
            spacing: Theme.s
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// A panel that belongs to a control, which is its parent: under it, centred, inside the window. Escape closes it, and
/// so does a press outside, which does nothing else.
T.Popup {
    id: root

    /// What a screen reader calls it.
    required property string name

    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + Theme.s : 0
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    margins: Theme.m
    modal: true
    dim: false
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    enter: PopIn {}
    exit: PopOut {}
    background: FloatingGround {
        Accessible.role: Accessible.Dialog
        Accessible.name: root.name
    }
    T.Overlay.modal: Item {}
}

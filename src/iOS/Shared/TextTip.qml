// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// Tool tip of the control in which it stands: plain text under or over it, never wider than the window.
T.ToolTip {
    id: root

    /// Whether the pointer rests on the control, or the keyboard has reached it.
    required property bool shown

    x: parent ? Math.round((parent.width - implicitWidth) / 2) : 0
    y: parent ? parent.height + Theme.xs : 0
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    margins: Theme.s
    horizontalPadding: 9
    verticalPadding: 5
    delay: TipTiming.delay
    visible: shown && text.length > 0
    // Escape is for what lies below: it must not take a second press because the first one only closed a tip.
    closePolicy: T.Popup.CloseOnPressOutsideParent | T.Popup.CloseOnReleaseOutsideParent
    onOpened: TipTiming.noteShown()
    onClosed: TipTiming.noteHidden()

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.quick }
    }
    background: Rectangle {
        radius: Theme.radiusSegment
        color: Theme.tipGround
    }
    contentItem: PlainText {
        text: root.text
        textStyle: Theme.caption
        color: Theme.tipText
    }
}

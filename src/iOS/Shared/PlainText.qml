// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A text of the program's own: never taken for markup, one line cut off with an ellipsis unless `wrapMode` says
/// otherwise. Give it a width where it may be cut. Texts from outside go into an OutsideText.
Text {
    id: root

    property TextStyle textStyle: Theme.body
    readonly property bool wraps: wrapMode !== Text.NoWrap
    readonly property real natural: Math.ceil(metrics.height)
    /// The line's leading, half above the letters and half below: Text alone puts all of it below.
    readonly property real halfLeading: Math.round((textStyle.line - natural) / 2)

    textFormat: Text.PlainText
    color: Theme.primary
    font.family: Theme.fontFamily
    font.pixelSize: textStyle.size
    font.weight: textStyle.weight
    font.letterSpacing: textStyle.tracking
    elide: wraps ? Text.ElideNone : Text.ElideRight
    maximumLineCount: wraps ? 2147483647 : 1
    lineHeightMode: wraps ? Text.FixedHeight : Text.ProportionalHeight
    lineHeight: wraps ? textStyle.line : 1
    verticalAlignment: wraps ? Text.AlignTop : Text.AlignVCenter
    topPadding: halfLeading
    bottomPadding: wraps ? -halfLeading : textStyle.line - natural - halfLeading
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text.length === 0

    FontMetrics {
        id: metrics

        font: root.font
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A value that can be selected and copied, by pointer and keyboard. Plain text, on as many lines as it needs.
TextEdit {
    id: root

    required property string content
    property TextStyle textStyle: Theme.body
    readonly property real leading: textStyle.line - Math.ceil(metrics.height)

    text: DisplayText.oneLine(content)
    textFormat: TextEdit.PlainText
    readOnly: true
    selectByMouse: true
    selectByKeyboard: true
    persistentSelection: false
    activeFocusOnTab: true
    wrapMode: TextEdit.Wrap
    // As tall on one line as any text of its style.
    topPadding: Math.round(leading / 2)
    bottomPadding: leading - topPadding
    color: Theme.primary
    selectionColor: Theme.accent
    selectedTextColor: Theme.textOnAccent
    font.family: Theme.fontFamily
    font.pixelSize: textStyle.size
    font.weight: textStyle.weight
    font.letterSpacing: textStyle.tracking
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    onActiveFocusChanged: if (!activeFocus) deselect()

    FontMetrics {
        id: metrics

        font: root.font
    }
    FocusRing {
        anchors.margins: -Theme.xxs
        shown: root.activeFocus
        inside: true
        around: Theme.radiusCheck
    }
}

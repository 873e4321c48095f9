// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// What every button of the program is: reached by Tab, pressed by pointer, Space, Enter or a screen reader. `text` is
/// its name.
PressableItem {
    id: root

    property real horizontalPadding: 0
    /// Enter presses it. A control that stands in for a value leaves Enter to the form's confirming button instead.
    property bool enterPresses: true

    /// Enter was pressed, and does not press this control.
    signal entered

    function enter(): void {
        if (root.enterPresses)
            root.clicked()
        else
            root.entered()
    }

    /// What a screen reader does with it.
    function pressForReader(): void {
        if (root.enabled)
            root.clicked()
    }

    leftPadding: horizontalPadding
    rightPadding: horizontalPadding
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.StrongFocus
    Keys.onReturnPressed: root.enter()
    Keys.onEnterPressed: root.enter()

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: root.pressForReader()
}

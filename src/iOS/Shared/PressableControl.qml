// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// What every button of the program is: reached by Tab, pressed by pointer, Space, Enter or a screen reader. `text` is
/// its name.
T.AbstractButton {
    id: root

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

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    font.family: Theme.fontFamily
    // Always taken: under some desktops the template's own buttons react to Enter too.
    Keys.onReturnPressed: root.enter()
    Keys.onEnterPressed: root.enter()

    Accessible.role: Accessible.Button
    Accessible.name: text
    // Qt's own buttons offer this action and then ignore it.
    Accessible.onPressAction: root.clicked()
}

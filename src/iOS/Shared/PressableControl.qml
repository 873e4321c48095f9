// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// What every button of the program is: reached by Tab, pressed by pointer, Space, Enter or a screen reader. `text` is
/// its name.
T.AbstractButton {
    id: root

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    font.family: Theme.fontFamily
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: text
    // Qt's own buttons offer this action and then ignore it.
    Accessible.onPressAction: root.clicked()
}

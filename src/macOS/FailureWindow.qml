// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// Says why the program cannot start. Closing it, by its button or otherwise, is all that can be done.
T.ApplicationWindow {
    id: root

    required property string message

    width: 480
    height: column.implicitHeight + 2 * Theme.xxl
    minimumWidth: width
    minimumHeight: height
    visible: true
    title: Qt.application.displayName // qmllint disable
    color: Theme.window
    font.family: Theme.fontFamily

    Column {
        id: column

        x: Theme.xxl
        y: Theme.xxl
        width: root.width - 2 * Theme.xxl
        spacing: Theme.xl

        PlainText {
            width: parent.width
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            text: root.message
        }
        ProminentButton {
            anchors.right: parent.right
            text: Texts.localized("failure.close", "Cerrar")
            focus: true
            onClicked: root.close()
        }
    }
}

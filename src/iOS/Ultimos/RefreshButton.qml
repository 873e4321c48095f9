// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// Asks for a refresh. While one runs it shows a spinner, and after the user's own a bar that fills until the next one
/// may be asked for.
IconButton {
    id: root

    required property bool isLoading
    required property bool isCoolingDown
    /// How much of the waiting is over, 0 to 1.
    required property real progress

    objectName: "refreshButton"
    iconName: "arrow.clockwise"
    text: Texts.localized("menu.refresh", "Actualizar terremotos")
    enabled: !isLoading && !isCoolingDown
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: root.iconName
            color: root.iconColor
            visible: root.enabled
        }
        Spinner {
            anchors.centerIn: parent
            name: root.text
            visible: root.isLoading
        }
        Column {
            anchors.centerIn: parent
            spacing: Theme.xxs
            visible: root.isCoolingDown && !root.isLoading

            Icon {
                anchors.horizontalCenter: parent.horizontalCenter
                width: Theme.iconHead
                height: Theme.iconHead
                name: root.iconName
                color: root.iconColor
            }
            CooldownBar {
                objectName: "cooldownBar"
                progress: root.progress
            }
        }
    }
}

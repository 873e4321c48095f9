// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The settings over a screen, made anew each time they open.
Sheet {
    id: root

    /// The form, which scrolls by itself.
    required property Component settings
    readonly property real roomForSettings: parent ? parent.height - 2 * Theme.xxl - headHeight : 0

    title: Texts.localized("Ajustes", "Ajustes")
    ground: Theme.surface
    hasCloseButton: true
    preferredWidth: 520

    Loader {
        objectName: "settingsSheet"
        width: parent.width
        height: Math.min(implicitHeight, root.roomForSettings)
        active: root.visible
        sourceComponent: root.settings
    }
}

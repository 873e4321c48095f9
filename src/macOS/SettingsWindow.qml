// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Ajustes
import orvalia.Shared

/// The one settings window: opening it again brings it to the front.
T.ApplicationWindow {
    id: root

    function open(): void {
        // Showing takes a window out of every state, not only out of the dock.
        if (!root.visible || root.visibility === Window.Minimized)
            root.show()
        root.raise()
        root.requestActivate()
    }

    width: 520
    height: 480
    minimumWidth: 420
    minimumHeight: 320
    transientParent: null
    title: Texts.localized("Ajustes", "Ajustes")
    color: Theme.surface
    font.family: Theme.fontFamily

    Shortcut {
        sequences: ["Ctrl+W", "Escape"]
        enabled: !question.visible
        onActivated: root.close()
    }
    // Made anew each time the window opens: only then does the screen look at the permissions.
    Loader {
        anchors.fill: parent
        active: root.visible
        sourceComponent: SettingsView {}
    }
    PermissionQuestion {
        id: question
    }
}

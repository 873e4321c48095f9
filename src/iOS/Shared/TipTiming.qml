// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton
import QtQuick

/// When the next tool tip appears: after a moment's rest, but at once while another has only just gone.
QtObject {
    id: root

    property bool warm: false
    readonly property int rest: 600
    readonly property int delay: warm ? 0 : rest
    readonly property Timer cooling: Timer {
        interval: root.rest
        onTriggered: root.warm = false
    }

    function noteShown(): void {
        cooling.stop()
        warm = true
    }

    function noteHidden(): void {
        cooling.restart()
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A row with a switch. It shows `on` and never changes it.
FormRow {
    id: root

    required property bool on

    signal requested(bool on)

    ToggleSwitch {
        text: root.label
        on: root.on
        onRequested: (on) => root.requested(on)
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// What darkens a window behind a sheet.
Rectangle {
    color: Theme.scrim

    Behavior on opacity {
        NumberAnimation { duration: Theme.popIn }
    }
}

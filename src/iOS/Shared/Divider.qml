// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A hairline, level unless `vertical`: one logical pixel on whole device pixels.
Rectangle {
    property bool vertical: false

    implicitWidth: vertical ? Theme.hair : 0
    implicitHeight: vertical ? 0 : Theme.hair
    color: Theme.divider
    antialiasing: false
}

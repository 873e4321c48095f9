// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// Something that the main menu offers, with the key that does the same wherever the focus is.
Shortcut {
    required property string text

    context: Qt.ApplicationShortcut
}

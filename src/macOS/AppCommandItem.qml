// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The entry of a command in the main menu.
ActionMenuItem {
    id: root

    required property AppCommand command

    text: command.text
    shortcutText: command.portableText
    onTriggered: command.activated()
}

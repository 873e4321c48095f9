// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// Parts the groups of a menu.
T.MenuSeparator {
    implicitWidth: 20
    implicitHeight: 11
    horizontalPadding: 10
    verticalPadding: 5
    Accessible.role: Accessible.Separator
    contentItem: Divider {}
}

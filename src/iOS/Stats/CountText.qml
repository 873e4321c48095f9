// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A count at the end of a row.
NumberText {
    required property int count

    text: count
    color: Theme.secondary
    font.family: Theme.fontFamily
    font.pixelSize: Theme.subheadline.size
    line: Theme.subheadline.line
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}

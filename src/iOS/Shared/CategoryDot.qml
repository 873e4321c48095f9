// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The dot in front of a category's name; nothing when transparent.
CategoryGround {
    width: color.a > 0 ? 10 : 0
    height: 10
    radius: 5
    visible: color.a > 0
}

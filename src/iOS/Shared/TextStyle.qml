// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// How a text is set: size and line height in logical pixels, tracking in pixels added to each letter.
QtObject {
    required property real size
    property int weight: Font.Normal
    required property real line
    property real tracking: 0
}

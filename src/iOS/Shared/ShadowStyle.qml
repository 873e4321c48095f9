// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick

/// A shadow's colour, its blur (twice the standard deviation) and how far down it falls, in logical pixels.
QtObject {
    required property color color
    required property real blur
    required property real offset
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A text from outside on one line: line ends, control characters and marks that turn the reading direction about
/// are taken out before it is shown.
PlainText {
    required property string content

    text: DisplayText.oneLine(content)
}

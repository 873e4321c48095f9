// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// What a screen shows in place of its content while the first of it is on its way.
Column {
    id: root

    required property string text

    spacing: Theme.m

    Spinner {
        anchors.horizontalCenter: parent.horizontalCenter
        size: 28
        name: root.text
    }
    PlainText {
        text: root.text
        color: Theme.secondary
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// How popovers, menus and sheets go.
Transition {
    ParallelAnimation {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.popOut; easing.type: Easing.OutQuad }
        NumberAnimation { property: "scale"; from: 1; to: Theme.popScale; duration: Theme.popOut; easing.type: Easing.OutQuad }
    }
}

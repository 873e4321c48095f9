// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// How popovers, menus and sheets come.
Transition {
    ParallelAnimation {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.popIn; easing.type: Easing.OutQuad }
        NumberAnimation { property: "scale"; from: Theme.popScale; to: 1; duration: Theme.popIn; easing.type: Easing.OutQuad }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Map
import orvalia.Shared

/// Nearer and farther, one above the other.
Item {
    id: root

    required property MapController controller

    width: Theme.hitSize
    height: column.height

    FloatingGround {
        anchors.fill: parent
        radius: Theme.radiusZoom
        color: Theme.material
        shadowStyle: Theme.shadowControl
    }
    Column {
        id: column

        IconButton {
            text: Texts.localized("map.zoomIn", "Acercar")
            iconName: "plus"
            iconSize: Theme.iconField
            enabled: root.controller.canZoomIn
            onClicked: root.controller.zoomIn()
        }
        Divider {
            width: root.width
        }
        IconButton {
            text: Texts.localized("map.zoomOut", "Alejar")
            iconName: "minus"
            iconSize: Theme.iconField
            enabled: root.controller.canZoomOut
            onClicked: root.controller.zoomOut()
        }
    }
}

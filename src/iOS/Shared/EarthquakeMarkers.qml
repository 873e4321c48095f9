// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// All markers of a map: the layer, and above it the few that move.
EarthquakeMarkerLayer {
    id: root

    edge: Theme.categoryEdge

    Repeater {
        model: root.raised
        delegate: EarthquakeMarker {
            required property string eventID
            required property point position

            x: Math.round(position.x)
            y: Math.round(position.y)
            z: isSelected ? 2 : isLatest ? 1 : 0
            onSettled: root.raised.settle(eventID)
        }
    }
}

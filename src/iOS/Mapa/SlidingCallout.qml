// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Mapa
import orvalia.Shared

/// The callout at the bottom of the map: it rises with a fade when an event is selected, and goes the same way.
EarthquakeCallout {
    id: root

    required property MapScreen screen
    /// Pixels of the map's lower part that it covers at rest.
    readonly property real coveredHeight: screen.hasCallout ? height + Theme.l : 0
    /// From 0, below the edge, to 1, at rest.
    property real progress: screen.hasCallout ? 1 : 0
    property bool isDismissed: false

    height: implicitHeight
    y: parent.height - (height + Theme.l) * (Theme.reducedMotion ? 1 : progress)
    opacity: Math.min(1, progress)
    visible: progress > 0
    enabled: screen.hasCallout
    magnitude: screen.magnitude
    location: screen.location
    dateText: screen.dateText
    depthText: screen.depthText
    magnitudeType: screen.magnitudeType
    onViewDetail: screen.viewDetail()
    onDismissed: root.dismiss()
    Keys.onEscapePressed: root.dismissed()

    Behavior on progress {
        NumberAnimation {
            duration: Math.max(Theme.quick, root.isDismissed ? Theme.standard : Theme.springSelect)
            easing.type: Easing.BezierSpline
            easing.bezierCurve: root.isDismissed ? Theme.easeInOutCurve : Theme.springCurve // qmllint disable
        }
    }

    /// Its own button lets it go more slowly than a tap on the marker.
    function dismiss(): void {
        root.isDismissed = true
        root.screen.dismissCallout()
        root.isDismissed = false
    }
}

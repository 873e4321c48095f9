// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Detail
import orvalia.Shared

/// One event: a map of where it was, with what happened around it, and its fields.
NavigationPage {
    id: root

    required property ModelContainer container
    required property earthquakeReference event

    title: DisplayText.oneLine(screen.title)
    onAppeared: screen.appear()

    EarthquakeDetailScreen {
        id: screen

        container: root.container
        event: root.event
        controller: map.controller
    }
    ScrollPage {
        objectName: "page"
        anchors.fill: parent
        focus: true
        name: root.title

        MapSurface {
            id: map

            objectName: "detailMap"
            width: parent.width
            height: 300
            name: DisplayText.oneLine(screen.location)
            region: screen.region // qmllint disable
            annotations: dots
            wheelNeedsFocus: true
            onDoubleTapped: position => map.zoomUnless(false, position)

            EarthquakeMarkerLayer {
                id: dots

                anchors.fill: parent
                controller: map.controller
                markers: screen.nearby
                style: EarthquakeMarkerLayer.Style.dots
            }
            PulsingStar {
                color: screen.color
                place: screen.place
                standingHeight: dots.standingHeight
            }
        }
        Column {
            x: Theme.l
            width: parent.width - 2 * Theme.l
            topPadding: Theme.l

            DetailRow {
                width: parent.width
                iconName: "calendar"
                label: Texts.localized("detail.datetime", "Date and time")
                value: screen.dateText
            }
            DetailRow {
                width: parent.width
                iconName: "location.fill"
                label: Texts.localized("detail.epicenter", "Epicenter")
                value: screen.epicenterText
            }
            DetailRow {
                width: parent.width
                iconName: "arrow.down.circle"
                label: Texts.localized("detail.depth", "Depth")
                value: screen.depthText
            }
            DetailRow {
                width: parent.width
                iconName: "waveform.path"
                label: Texts.localized("detail.magnitude", "Magnitude")
                value: screen.magnitudeText
            }
            DetailRow {
                width: parent.width
                visible: screen.hasMaxIntensity
                iconName: "bolt.fill"
                label: Texts.localized("detail.maxIntensity", "Maximum intensity")
                value: screen.maxIntensity
            }
            DetailRow {
                width: parent.width
                isLast: true
                iconName: "sensor.tag.radiowaves.forward"
                label: Texts.localized("detail.location", "Location")
                value: screen.location
            }
        }
    }
}

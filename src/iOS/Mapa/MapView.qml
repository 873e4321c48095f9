// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Detail
import orvalia.Mapa
import orvalia.Shared

/// Every event that passes the filters, on a map of the islands.
NavigationStack {
    id: root

    required property ModelContainer container
    required property EarthquakeRepository repository
    /// The form of the settings, for a sheet.
    required property Component settings

    MapScreen {
        id: screen

        container: root.container
        repository: root.repository
        onDetailRequested: event => root.openEvent(page, detail, event)
    }
    Component {
        id: detail

        EarthquakeDetailView {
            container: root.container
        }
    }
    SettingsSheet {
        settings: root.settings
        visible: screen.showSettings
        onDismissRequested: screen.showSettings = false
    }

    initialItem: NavigationPage {
        id: page

        title: Texts.localized("tab.mapa", "Mapa")
        runsUnderToolbar: true
        toolbarItems: [
            IconButton {
                objectName: "filterButton"
                iconName: screen.hasFilter ? "line.3.horizontal.decrease.circle.fill"
                    : "line.3.horizontal.decrease.circle"
                text: Texts.localized("menu.openFilter", "Abrir filtros")
                active: screen.hasFilter
                open: screen.showFilterPopover
                onClicked: screen.showFilterPopover = true

                FilterPopover {
                    visible: screen.showFilterPopover
                    magnitudeFilter: screen.selectedFilter
                    dateFilter: screen.selectedDateFilter
                    onMagnitudeFilterChosen: choice => screen.selectedFilter = choice
                    onDateFilterChosen: choice => screen.selectedDateFilter = choice
                    onResetRequested: screen.resetFilters()
                    onClosed: screen.showFilterPopover = false
                }
            },
            Item {
                width: Theme.hitSize
                height: Theme.hitSize
                visible: screen.isLoading

                Spinner {
                    anchors.centerIn: parent
                    name: Texts.localized("list.loading", "Cargando terremotos…")
                }
            }
        ]
        onAppeared: screen.appear()
        onDisappeared: screen.disappear()

        MapSurface {
            id: map

            objectName: "map"
            anchors.fill: parent
            focus: true
            name: walk.text.length > 0 ? walk.text : page.title
            region: screen.region // qmllint disable
            topCover: page.coveredHeight
            bottomCover: callout.coveredHeight
            annotations: markerLayer
            onTapped: (position, byFinger) => walk.tap(position, byFinger)
            onDoubleTapped: position => map.zoomUnless(screen.hasMarkerAt(markerLayer, position), position)
            Keys.onPressed: event => event.accepted = walk.pressKey(event.key, event.modifiers)

            EarthquakeMarkers {
                id: markerLayer

                objectName: "markers"
                anchors.fill: parent
                controller: map.controller
                markers: screen.markers
            }
            FocusRing {
                anchors.fill: undefined
                anchors.margins: 0
                x: walk.position.x - width / 2
                y: walk.position.y - height / 2
                width: walk.diameter + 2 * (Theme.focusGap + Theme.focusWidth)
                height: width
                radius: width / 2
                shown: walk.isOnMap && map.hasKeyboardFocus
            }
        }
        MarkerWalk {
            id: walk

            screen: screen
            layer: markerLayer
            topCover: map.topCover
            bottomCover: map.bottomCover
        }
        SlidingCallout {
            id: callout

            anchors { left: parent.left; right: parent.right; leftMargin: Theme.l; rightMargin: Theme.l }
            screen: screen
            onDismissed: map.forceActiveFocus(Qt.OtherFocusReason)
        }
    }
}

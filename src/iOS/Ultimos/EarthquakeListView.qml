// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Detail
import orvalia.Shared
import orvalia.Ultimos

/// The events of the last thirty days, newest first, in three sections.
NavigationStack {
    id: root

    required property ModelContainer container
    required property EarthquakeRepository repository
    /// The page of the whole store, to be pushed over the list.
    required property Component historico
    /// The form of the settings.
    required property Component settings

    EarthquakeListScreen {
        id: screen

        container: root.container
        repository: root.repository
    }
    Component {
        id: detail

        EarthquakeDetailView {
            container: root.container
        }
    }

    PresentedPage {
        stack: root
        page: root.historico
        isPresented: screen.showHistorico
        onDismissed: screen.showHistorico = false
    }
    SettingsSheet {
        settings: root.settings
        visible: screen.showSettings
        onDismissRequested: screen.showSettings = false
    }

    initialItem: NavigationPage {
        id: page

        title: Texts.localized("tab.sismos", "Sismos")
        subtitle: screen.subtitle
        search: PageSearch {
            prompt: Texts.localized("list.search.prompt", "Buscar por localización")
            text: screen.searchText
            isPresented: screen.isSearchPresented
            onTextEdited: text => screen.searchText = text
            onPresentationRequested: isPresented => screen.isSearchPresented = isPresented
            onResultsRequested: list.forceActiveFocus(Qt.TabFocusReason)
        }
        toolbarItems: [
            RefreshButton {
                isLoading: screen.isLoading
                isCoolingDown: screen.isCoolingDown
                progress: screen.cooldownProgress
                onClicked: screen.manualRefresh()
            },
            IconButton {
                id: filterButton

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
            }
        ]
        onAppeared: screen.appear()
        onDisappeared: screen.disappear()

        EarthquakeList {
            id: list

            objectName: "earthquakeList"
            anchors.fill: parent
            visible: screen.filling === EarthquakeListScreen.List
            focus: true
            name: page.title
            model: screen.rows
            sectionTitles: screen.sectionTitles
            areRowsLinks: true
            currentIndex: screen.rows.currentRow
            onRowChosen: row => screen.rows.currentRow = row
            onRowActivated: row => root.openEvent(page, detail, screen.rows.reference(row))

            PullToRefresh {
                list: list
                isLoading: screen.isLoading
                onRefreshRequested: screen.manualRefresh()
            }
        }
        LoadingState {
            objectName: "listLoading"
            anchors.centerIn: parent
            visible: screen.filling === EarthquakeListScreen.Loading
            text: Texts.localized("list.loading", "Cargando terremotos…")
        }
        EmptyState {
            objectName: "listEmpty"
            anchors.fill: parent
            visible: screen.filling === EarthquakeListScreen.Empty
            iconName: "waveform.path.ecg"
            title: Texts.localized("list.empty.title", "Sin datos")
            description: Texts.localized("list.empty.description",
                                         "No hay terremotos registrados. Tira hacia abajo para actualizar.")
        }
        EmptyState {
            objectName: "listNoResults"
            anchors.fill: parent
            visible: screen.filling === EarthquakeListScreen.NoResults
            iconName: "magnifyingglass"
            title: Texts.localized("list.noresults.title", "Sin resultados")
            description: Texts.localized("list.noresults.description",
                                         "Ningún terremoto coincide con los filtros aplicados.")
        }
    }
}

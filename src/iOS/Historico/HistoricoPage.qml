// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Detail
import orvalia.Historico
import orvalia.Shared

/// The page of the history, the first of its own stack or pushed on another one.
NavigationPage {
    id: root

    required property ModelContainer container

    title: Texts.localized("historico.title", "Histórico")
    subtitle: screen.subtitle
    search: PageSearch {
        prompt: Texts.localized("historico.search.prompt", "Buscar por localización")
        text: screen.searchText
        isPresented: screen.isSearchPresented
        onTextEdited: text => screen.searchText = text
        onPresentationRequested: isPresented => screen.isSearchPresented = isPresented
        onResultsRequested: list.forceActiveFocus(Qt.TabFocusReason)
    }
    toolbarItems: IconButton {
        objectName: "filterButton"
        iconName: screen.hasFilter ? "line.3.horizontal.decrease.circle.fill" : "line.3.horizontal.decrease.circle"
        text: Texts.localized("menu.openFilter", "Abrir filtros")
        active: screen.hasFilter
        open: screen.showFilterSheet
        onClicked: screen.showFilterSheet = true
    }
    onAppeared: screen.appear()
    onDisappeared: screen.disappear()

    HistoricoScreen {
        id: screen

        container: root.container
    }
    Connections {
        target: screen

        function onShowFilterSheetChanged(): void {
            if (screen.showFilterSheet)
                filterSheet.loadAnew()
        }
    }
    Loader {
        id: filterSheet

        function loadAnew(): void {
            // One that is still fading out holds what its user gave up.
            filterSheet.active = false
            filterSheet.active = true
        }

        active: false
        sourceComponent: Item {
            HistoricoFilterSheet {
                viewModel: screen.viewModel
                visible: screen.showFilterSheet
                onDismissRequested: screen.showFilterSheet = false
                onClosed: filterSheet.active = false
            }
        }
    }
    Component {
        id: detail

        EarthquakeDetailView {
            container: root.container
        }
    }
    EarthquakeList {
        id: list

        objectName: "history"
        anchors.fill: parent
        visible: screen.filling === HistoricoScreen.List
        focus: true
        name: root.title
        model: screen.rows
        sectionTitles: ({})
        areRowsLinks: true
        currentIndex: screen.rows.currentRow
        onRowChosen: row => screen.rows.currentRow = row
        onRowActivated: row => root.stack.openEvent(root, detail, screen.rows.reference(row))
        footer: LoadMoreRow {
            list: ListView.view // qmllint disable
            isLoading: screen.isLoading
            hasMore: screen.hasMore
            onLoadRequested: screen.loadMore()
        }
    }
    LoadingState {
        anchors.centerIn: parent
        visible: screen.filling === HistoricoScreen.Loading
        text: Texts.localized("historico.loading", "Cargando histórico…")
    }
    EmptyState {
        anchors.fill: parent
        visible: screen.filling === HistoricoScreen.Empty
        iconName: "calendar.badge.exclamationmark"
        title: Texts.localized("historico.empty.title", "Sin resultados")
        description: Texts.localized("historico.empty.description", "No hay terremotos para el período seleccionado.")
    }
}

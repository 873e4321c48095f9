// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Ajustes
import orvalia.Historico
import orvalia.Info
import orvalia.Mapa
import orvalia.Shared
import orvalia.Shell
import orvalia.Stats
import orvalia.Ultimos

/// The main window: the sidebar, and beside it the screen of the selected section.
T.ApplicationWindow {
    id: root

    required property ModelContainer container
    readonly property bool isNarrow: width < Theme.compactWidth
    /// The window was closed; the program may live on in another one.
    property bool isClosed: false

    width: 1100
    height: 720
    minimumWidth: 360
    minimumHeight: 480
    visible: true
    title: Texts.localized("Terremotos", "Terremotos")
    color: Theme.window
    font.family: Theme.fontFamily
    onClosing: isClosed = true

    MacMainScreen {
        id: screen

        container: root.container
        isNarrow: root.isNarrow
        onSettingsRequested: settings.open()
    }
    MainMenu {
        id: mainMenu

        parent: sidebar.isMenuButtonShown ? sidebar.menuButton : content
        x: sidebar.isMenuButtonShown ? 0 : Theme.m
        y: parent === content ? Theme.toolbarHeight - Theme.s : parent.height + Theme.xs
        onAboutRequested: about.open()
    }
    Shortcut {
        sequence: "F10"
        onActivated: mainMenu.open()
    }
    AboutSheet {
        id: about

        onDismissRequested: close()
    }
    InfoView {
        visible: screen.showInfoSheet
        onDismissRequested: screen.showInfoSheet = false
    }
    SettingsWindow {
        id: settings
    }
    PermissionQuestion {
        // A question that the settings raise is put where the user is.
        isHost: !settings.visible
    }

    Item {
        id: content

        x: sidebar.dockedWidth
        width: root.width - x
        height: root.height
        visible: !root.isClosed

        // qmllint disable unqualified
        SectionLoader {
            sectionId: "sismos"
            shell: screen
            sourceComponent: EarthquakeListView {
                container: root.container
                repository: screen.repository
            }
        }
        SectionLoader {
            sectionId: "historico"
            shell: screen
            sourceComponent: HistoricoView { container: root.container }
        }
        SectionLoader {
            sectionId: "mapa"
            shell: screen
            sourceComponent: MapView {
                container: root.container
                repository: screen.repository
            }
        }
        SectionLoader {
            sectionId: "stats"
            shell: screen
            sourceComponent: StatsView { container: root.container }
        }
        SectionLoader {
            sectionId: ""
            shell: screen
            sourceComponent: EmptySection {
                title: ""
                hint: Texts.localized("mac.selectSection", "Select a section")
            }
        }
        // qmllint enable unqualified
    }
    SlidingSidebar {
        id: sidebar

        anchors.fill: parent
        isShown: screen.showsSidebar
        slidesOver: screen.isNarrow
        isMenuOpen: mainMenu.visible
        onMenuRequested: mainMenu.open()
        onToggleRequested: screen.toggleSidebar()
        onDismissRequested: screen.dismissSlidingSidebar()
        onSettingsRequested: settings.open()
        onInfoRequested: screen.showInfoSheet = true
    }
}

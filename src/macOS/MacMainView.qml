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

    /// A sidebar that slides in takes the keyboard's focus; one that goes gives it to the content.
    function moveFocus(): void {
        if (screen.showsSidebar && screen.isNarrow)
            sidebar.focusSections()
        else if (!screen.showsSidebar && sidebar.focus)
            content.focus = true
    }

    width: 1100
    height: 720
    minimumWidth: 360
    minimumHeight: 480
    visible: true
    title: Texts.localized("Terremotos", "Terremotos")
    color: Theme.window
    font.family: Theme.fontFamily
    onClosing: screen.isClosed = true
    Component.onCompleted: (screen.showsSidebar ? sidebar : content).focus = true

    MacMainScreen {
        id: screen

        container: root.container
        isNarrow: root.isNarrow
        isActive: root.active
        onColumnVisibilityChanged: root.moveFocus()
    }
    MainMenu {
        id: mainMenu

        parent: sidebar.isMenuButtonShown ? sidebar.menuButton : content
        x: sidebar.isMenuButtonShown ? 0 : Theme.m
        y: parent === content ? Theme.toolbarHeight - Theme.s : parent.height + Theme.xs
        onAboutRequested: about.open()
    }
    Loader {
        id: menuBar

        active: DesktopScheme.hasMenuBar
        source: "DesktopMenuBar.qml"
    }
    Connections {
        target: menuBar.item
        ignoreUnknownSignals: true

        function onAboutRequested(): void {
            about.open()
        }
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
    PermissionQuestion {
        // A question is put once, and one that the settings raise is put there.
        isHost: screen.isFront && !screen.showsSettings
    }

    // What the screens show of one another.
    Component {
        id: historicoPage

        HistoricoPage { container: root.container }
    }
    Component {
        id: settingsForm

        SettingsView {}
    }
    SlidingSidebar {
        id: sidebar

        // Before the content in the order of Tab, above it on the screen.
        z: 1
        anchors.fill: parent
        isShown: screen.showsSidebar
        slidesOver: screen.isNarrow
        isMenuOpen: mainMenu.visible
        onMenuRequested: mainMenu.open()
        onToggleRequested: screen.toggleSidebar()
        onDismissRequested: screen.dismissSlidingSidebar()
        onSettingsRequested: screen.openSettings()
        onInfoRequested: screen.showInfoSheet = true
    }
    FocusScope {
        id: content

        x: sidebar.dockedWidth
        width: root.width - x
        height: root.height
        visible: !screen.isClosed
        // What lies over it is done with.
        onActiveFocusChanged: if (activeFocus) screen.dismissSlidingSidebar()

        // qmllint disable unqualified
        SectionLoader {
            sectionId: "sismos"
            shell: screen
            sourceComponent: EarthquakeListView {
                container: root.container
                repository: screen.repository
                historico: historicoPage
                settings: settingsForm
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
                settings: settingsForm
            }
        }
        SectionLoader {
            sectionId: "stats"
            shell: screen
            sourceComponent: StatsView {
                container: root.container
                settings: settingsForm
            }
        }
        SectionLoader {
            sectionId: ""
            shell: screen
            sourceComponent: EmptySection {}
        }
        // qmllint enable unqualified
    }
}

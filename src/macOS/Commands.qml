// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton
import QtQuick
import orvalia.Shared
import orvalia.Shell

/// What the main menu offers, once for the whole program: the keys of two windows would get in each other's way. They
/// work whether the menu is open or not.
QtObject {
    readonly property AppCommand refresh: AppCommand {
        text: Texts.localized("menu.refresh", "Actualizar terremotos")
        sequence: "Ctrl+R"
        onActivated: AppCommands.refresh()
    }
    readonly property Shortcut refreshAgain: Shortcut {
        sequence: "F5"
        context: Qt.ApplicationShortcut
        onActivated: AppCommands.refresh()
    }
    readonly property AppCommand toggleSidebar: AppCommand {
        text: Texts.localized("menu.toggleSidebar", "Mostrar/Ocultar barra lateral")
        sequence: "Ctrl+Shift+S"
        onActivated: AppCommands.toggleSidebar()
    }
    readonly property AppCommand settings: AppCommand {
        text: Texts.localized("menu.nav.ajustes", "Ajustes")
        sequence: "Ctrl+,"
        onActivated: AppCommands.openSettings()
    }
    readonly property AppCommand sismos: AppCommand {
        text: Texts.localized("menu.nav.sismos", "Sismos")
        sequence: "Ctrl+1"
        onActivated: AppCommands.navigate("sismos")
    }
    readonly property AppCommand historico: AppCommand {
        text: Texts.localized("menu.nav.historico", "Histórico")
        sequence: "Ctrl+2"
        onActivated: AppCommands.navigate("historico")
    }
    readonly property AppCommand mapa: AppCommand {
        text: Texts.localized("menu.nav.mapa", "Mapa")
        sequence: "Ctrl+3"
        onActivated: AppCommands.navigate("mapa")
    }
    readonly property AppCommand stats: AppCommand {
        text: Texts.localized("menu.nav.stats", "Estadísticas")
        sequence: "Ctrl+4"
        onActivated: AppCommands.navigate("stats")
    }
    readonly property AppCommand info: AppCommand {
        text: Texts.localized("menu.nav.info", "Información")
        sequence: "Ctrl+I"
        onActivated: AppCommands.openInfo()
    }
    readonly property AppCommand filter: AppCommand {
        text: Texts.localized("menu.openFilter", "Abrir filtros")
        sequence: "Ctrl+O"
        onActivated: AppCommands.openFilter()
    }
    readonly property AppCommand newWindow: AppCommand {
        text: Texts.localized("menu.newWindow", "Nueva ventana")
        sequence: "Ctrl+N"
        onActivated: AppCommands.openWindow()
    }
    readonly property AppCommand quit: AppCommand {
        text: Texts.localized("menu.quit", "Salir")
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }
}

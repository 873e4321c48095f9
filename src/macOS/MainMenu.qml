// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared
import orvalia.Shell

/// The one menu of the program.
ActionMenu {
    id: root

    signal aboutRequested

    title: Texts.localized("menu.main", "Menú principal")

    AppCommandItem { command: Commands.refresh }
    AppCommandItem { command: Commands.toggleSidebar }
    AppCommandItem { command: Commands.settings }
    ActionMenuDivider {}
    ActionMenu {
        title: Texts.localized("menu.navMenu", "Navegar")

        AppCommandItem { command: Commands.sismos }
        AppCommandItem { command: Commands.historico }
        AppCommandItem { command: Commands.mapa }
        AppCommandItem { command: Commands.stats }
        ActionMenuDivider {}
        AppCommandItem { command: Commands.info }
        ActionMenuDivider {}
        AppCommandItem { command: Commands.filter }
    }
    ActionMenuDivider {}
    AppCommandItem { command: Commands.newWindow }
    ActionMenuItem {
        text: Texts.localized("menu.about", "Acerca de Terremotos")
        onTriggered: root.aboutRequested()
    }
    AppCommandItem { command: Commands.quit }
}

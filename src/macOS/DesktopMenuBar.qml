// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Qt.labs.platform as Desktop
import orvalia.Shared
import orvalia.Shell

/// The main menu in the desktop's own menu bar. Load it only where there is one: what it stands on takes the widgets
/// library into the process, and complains where it finds no bar.
Item {
    id: root

    signal aboutRequested

    // The keys are the commands' own. Given here too they would work twice, once more for each window.
    component Entry: Desktop.MenuItem {
        required property AppCommand command

        text: command.text
        onTriggered: command.activated()
    }

    Desktop.MenuBar {
        Desktop.Menu {
            title: Texts.localized("Terremotos", "Terremotos")

            Entry { command: Commands.refresh }
            Entry { command: Commands.toggleSidebar }
            Entry { command: Commands.settings }
            Desktop.MenuSeparator {}
            Entry { command: Commands.newWindow }
            Desktop.MenuItem {
                text: Texts.localized("menu.about", "Acerca de Terremotos")
                onTriggered: root.aboutRequested()
            }
            Entry { command: Commands.quit }
        }
        Desktop.Menu {
            title: Texts.localized("menu.navMenu", "Navegar")

            Entry { command: Commands.sismos }
            Entry { command: Commands.historico }
            Entry { command: Commands.mapa }
            Entry { command: Commands.stats }
            Desktop.MenuSeparator {}
            Entry { command: Commands.info }
            Desktop.MenuSeparator {}
            Entry { command: Commands.filter }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared
import orvalia.Shell

/// The screen of one section: made anew each time the section is selected, gone when it is left. The empty id stands
/// for no section.
Loader {
    id: root

    required property string sectionId
    required property MacMainScreen shell

    anchors.fill: parent
    active: NavigationState.selectedId === sectionId && visible
    focus: active

    Binding {
        target: root.item as NavigationStack
        when: root.item !== null
        property: "showsSidebarButton"
        value: root.shell.needsSidebarButton
    }
    Connections {
        target: root.item as NavigationStack

        function onSidebarRequested(): void {
            root.shell.toggleSidebar()
        }
    }
}

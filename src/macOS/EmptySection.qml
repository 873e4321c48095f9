// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The page while no section is selected: a hint to select one.
NavigationStack {
    initialItem: NavigationPage {
        title: ""

        EmptyState {
            anchors.fill: parent
            iconName: "sidebar.left"
            title: Texts.localized("mac.selectSection", "Select a section")
        }
    }
}

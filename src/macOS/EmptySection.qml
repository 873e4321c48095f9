// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A page without content: the place of a section, or the hint to select one.
NavigationStack {
    id: root

    required property string title
    property string hint: ""

    initialItem: NavigationPage {
        title: root.title

        EmptyState {
            anchors.fill: parent
            iconName: "sidebar.left"
            title: root.hint
            visible: root.hint.length > 0
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The foot of a list that has more to load: a button as wide as the list, with a spinner while it loads.
Item {
    id: root

    required property ListView list
    required property bool isLoading
    required property bool hasMore

    signal loadRequested

    width: list.width
    // The list itself adds the rest of the air below.
    implicitHeight: hasMore ? Theme.loadMoreHeight + Theme.xl + Theme.l : 0
    visible: hasMore

    PressableControl {
        id: button

        objectName: "loadMore"
        x: Theme.xl
        y: Theme.xl
        width: root.width - 2 * Theme.xl
        height: Theme.loadMoreHeight
        text: Texts.localized("historico.loadMore", "Cargar más")
        enabled: !root.isLoading
        onClicked: root.loadRequested()
        // The focus that it gives up, by loading too, falls back to the rows.
        onActiveFocusChanged: if (!activeFocus) focus = false
        onVisualFocusChanged: if (visualFocus) root.list.positionViewAtEnd()
        background: Rectangle {
            radius: Theme.radiusGroup
            color: Theme.systemFill

            StateTint {
                anchors.fill: parent
                radius: Theme.radiusGroup
                hovered: button.hovered
                pressed: button.pressed
            }
            FocusRing {
                shown: button.visualFocus
                inside: true
                around: Theme.radiusGroup
            }
        }
        contentItem: Item {
            PlainText {
                anchors.centerIn: parent
                text: button.text
                font.weight: Font.Medium
                visible: !root.isLoading
                Accessible.ignored: true
            }
            Spinner {
                anchors.centerIn: parent
                name: Texts.localized("historico.loading", "Cargando histórico…")
                visible: root.isLoading
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared
import orvalia.Shell

/// The sidebar in its window: beside the content with a divider that pointer and arrows move, or sliding over it with a
/// scrim.
FocusScope {
    id: root

    required property bool isShown
    required property bool slidesOver
    required property bool isMenuOpen
    readonly property Item menuButton: sidebar.menuButton
    readonly property bool isMenuButtonShown: presence === 1
    /// How much of the window's width the sidebar takes from the content.
    readonly property real dockedWidth: slidesOver ? 0 : panel.x + panel.width
    property real preferredWidth: 190
    readonly property real leastWidth: 160
    readonly property real leastContentWidth: 360
    /// As the user wants it, as far as there is room.
    readonly property real roomyWidth: Math.max(leastWidth, Math.min(preferredWidth, width - leastContentWidth))
    readonly property real slidingWidth: 220
    /// From 0, out of sight, to 1.
    property real presence: isShown ? 1 : 0

    signal menuRequested
    signal toggleRequested
    signal dismissRequested
    signal settingsRequested
    signal infoRequested

    function focusSections(): void {
        sidebar.focusSections()
    }

    function widenTo(wanted: real): void {
        root.preferredWidth = Math.max(root.leastWidth, wanted)
    }

    Behavior on presence {
        NumberAnimation {
            duration: Theme.standard
            easing.bezierCurve: Theme.easeInOutCurve // qmllint disable type
        }
    }

    Rectangle {
        objectName: "sidebarScrim"
        anchors.fill: parent
        color: Theme.scrim
        opacity: root.presence
        visible: root.slidesOver && root.presence > 0

        MouseArea {
            anchors.fill: parent
            onClicked: root.dismissRequested()
            onWheel: wheel => wheel.accepted = true
        }
    }
    Item {
        id: panel

        x: -width * (1 - root.presence)
        width: root.slidesOver ? root.slidingWidth : root.roomyWidth
        height: root.height
        visible: root.presence > 0

        Shadow {
            anchors.fill: parent
            blur: Theme.shadowSheet.blur
            offset: Theme.shadowSheet.offset
            color: Theme.shadowSheet.color
            visible: root.slidesOver
        }
        Sidebar {
            id: sidebar

            objectName: "sidebar"
            anchors.fill: parent
            isMenuOpen: root.isMenuOpen
            focus: true
            Keys.onEscapePressed: event => {
                event.accepted = root.slidesOver
                if (root.slidesOver)
                    root.dismissRequested()
            }
            onMenuRequested: root.menuRequested()
            onToggleRequested: root.toggleRequested()
            onSettingsRequested: root.settingsRequested()
            onInfoRequested: root.infoRequested()
            onSectionChosen: root.dismissRequested()
        }
        Divider {
            anchors.right: parent.right
            height: parent.height
            vertical: true
        }
    }
    Item {
        id: splitter

        readonly property real step: 10

        x: panel.x + panel.width - width / 2
        width: Theme.s
        height: root.height
        visible: panel.visible && !root.slidesOver
        activeFocusOnTab: true
        Keys.onLeftPressed: root.widenTo(root.roomyWidth - step)
        Keys.onRightPressed: root.widenTo(root.roomyWidth + step)
        Accessible.role: Accessible.Splitter
        Accessible.name: Texts.localized("sidebar.width", "Ancho de la barra lateral")
        Accessible.focusable: true

        FocusRing {
            inside: true
            shown: splitter.activeFocus
        }

        HoverHandler {
            cursorShape: Qt.SplitHCursor
        }
        DragHandler {
            property real startWidth: root.roomyWidth

            target: null
            xAxis.enabled: true
            yAxis.enabled: false
            onActiveChanged: if (active) startWidth = root.roomyWidth
            onTranslationChanged: root.widenTo(startWidth + translation.x)
        }
    }
}

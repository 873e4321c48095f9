// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import orvalia.Shared
import orvalia.Shell

/// The left column: the program's name, the sections, and the way to settings and information.
FocusScope {
    id: root

    /// The main menu is open.
    required property bool isMenuOpen
    readonly property Item menuButton: menu

    signal menuRequested
    signal toggleRequested
    signal settingsRequested
    signal infoRequested
    /// A section was chosen here.
    signal sectionChosen

    function focusSections(): void {
        list.forceActiveFocus(Qt.ShortcutFocusReason)
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.sidebar
    }
    Item {
        id: head

        width: root.width
        height: Theme.toolbarHeight

        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            x: Theme.l
            width: buttons.x - x
            text: Texts.localized("Terremotos", "Terremotos")
            textStyle: Theme.headline
            Accessible.role: Accessible.Heading
        }
        Row {
            id: buttons

            anchors.verticalCenter: parent.verticalCenter
            anchors.right: parent.right
            anchors.rightMargin: Theme.s
            spacing: Theme.xxs

            IconButton {
                id: menu

                size: Theme.hitSizeSmall
                iconSize: Theme.iconHead
                iconName: "line.3.horizontal"
                text: Texts.localized("menu.main", "Menú principal")
                open: root.isMenuOpen
                onClicked: root.menuRequested()
            }
            IconButton {
                size: Theme.hitSizeSmall
                iconSize: Theme.iconHead
                iconName: "sidebar.left"
                text: Texts.localized("menu.toggleSidebar", "Mostrar/Ocultar barra lateral")
                onClicked: root.toggleRequested()
            }
        }
    }
    ListView {
        id: list

        function move(step: int): void {
            const next = Math.max(0, Math.min(count - 1, currentIndex < 0 ? 0 : currentIndex + step))
            showsFocus = true
            NavigationState.select(model.idAt(next))
        }

        /// The pointer's press brings the focus here, without showing it.
        function take(): void {
            forceActiveFocus(Qt.MouseFocusReason)
            showsFocus = false
        }

        property bool showsFocus: false

        anchors.top: head.bottom
        anchors.bottom: foot.top
        anchors.topMargin: Theme.xs
        x: Theme.s
        width: root.width - 2 * Theme.s
        model: SidebarModel {}
        currentIndex: model.rowOf(NavigationState.selectedId)
        spacing: Theme.xxs
        interactive: contentHeight > height
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: false
        Accessible.role: Accessible.List
        Accessible.name: Texts.localized("Terremotos", "Terremotos")
        onActiveFocusChanged: if (!activeFocus) showsFocus = false
        // The key that brought the focus here is released here.
        Keys.onReleased: event => showsFocus = showsFocus || event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab
        Keys.onUpPressed: move(-1)
        Keys.onDownPressed: move(1)
        delegate: SidebarRow {
            required property int index
            required property string itemId

            objectName: itemId
            width: list.width
            isSelected: itemId === NavigationState.selectedId
            isFocused: ListView.isCurrentItem && list.showsFocus
            onSelected: NavigationState.select(itemId)
            onDeselected: NavigationState.clear()
            onPressed: list.take()
            onClicked: root.sectionChosen()
        }
    }
    FocusRing {
        objectName: "sidebarFocus"
        anchors.fill: list
        inside: true
        shown: list.showsFocus && list.currentIndex < 0
    }
    Item {
        id: foot

        anchors.bottom: parent.bottom
        width: root.width
        height: Theme.icon + Theme.xs + 2 * Theme.s

        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            x: Theme.m - Theme.xs
            size: Theme.hitSizeSmall
            iconName: "gear"
            text: Texts.localized("sidebar.ajustes", "Ajustes")
            onClicked: root.settingsRequested()
        }
        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            x: parent.width - width - Theme.m + Theme.xs
            size: Theme.hitSizeSmall
            iconName: "info.circle"
            text: Texts.localized("sidebar.info", "Información")
            onClicked: root.infoRequested()
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import orvalia.Shared

/// The bar over a page: sidebar button, back, title and subtitle, actions, search. In a narrow window the search
/// folds into an icon, and takes the whole bar while it is in use.
Item {
    id: root

    required property string title
    required property string subtitle
    property alias items: actions.data
    required property PageSearch search
    required property bool translucent
    required property bool showsSidebarButton
    required property bool showsBackButton
    readonly property bool compact: Window.width < Theme.compactWidth
    readonly property bool isSearching: search !== null && search.isPresented
    readonly property bool isGivenToSearch: compact && isSearching

    signal sidebarRequested
    signal backRequested

    function focusSearch(): void {
        root.search.presentationRequested(true)
        field.forceActiveFocus(Qt.ShortcutFocusReason)
    }

    function leaveSearch(): void {
        root.search.presentationRequested(false)
        root.search.resultsRequested()
    }

    /// An empty search ends when the field is left; one with a text stays in force.
    function followFocus(): void {
        if (field.activeFocus)
            root.search.presentationRequested(true)
        else if (field.length === 0)
            root.search.presentationRequested(false)
    }

    readonly property TextStyle overSubtitle: TextStyle {
        size: Theme.title3.size
        weight: Theme.title3.weight
        line: 20
        tracking: Theme.title3.tracking
    }
    readonly property TextStyle underTitle: TextStyle {
        size: Theme.caption.size
        line: 15
    }

    implicitHeight: Theme.toolbarHeight
    onIsSearchingChanged: if (isSearching) field.forceActiveFocus(Qt.ShortcutFocusReason)

    Rectangle {
        anchors.fill: parent
        color: root.translucent ? Theme.barMaterial : Theme.window
    }
    // What the bar covers is not to be pressed through it.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }
    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: root.isGivenToSearch ? 10 : root.showsSidebarButton ? Theme.m
            : root.showsBackButton ? Theme.s : Theme.xl
        anchors.rightMargin: Theme.m
        spacing: Theme.s

        IconButton {
            objectName: "sidebarButton"
            iconName: "sidebar.left"
            text: Texts.localized("menu.toggleSidebar", "Mostrar/Ocultar barra lateral")
            visible: root.showsSidebarButton && !root.isGivenToSearch
            onClicked: root.sidebarRequested()
        }
        IconButton {
            iconName: "chevron.left"
            iconSize: Theme.iconHead
            text: Texts.localized("navigation.back", "Atrás")
            visible: root.showsBackButton && !root.isGivenToSearch
            onClicked: root.backRequested()
        }
        ColumnLayout {
            Layout.fillWidth: true
            visible: !root.isGivenToSearch
            spacing: 0

            OutsideText {
                Layout.fillWidth: true
                objectName: "pageTitle"
                content: root.title
                textStyle: root.subtitle.length > 0 ? root.overSubtitle : Theme.title3
                Accessible.role: Accessible.Heading
            }
            OutsideText {
                Layout.fillWidth: true
                objectName: "pageSubtitle"
                content: root.subtitle
                textStyle: root.underTitle
                color: Theme.secondary
                visible: root.subtitle.length > 0
            }
        }
        Row {
            id: actions

            visible: !root.isGivenToSearch
            spacing: Theme.xs
        }
        IconButton {
            iconName: "magnifyingglass"
            text: root.search ? root.search.prompt : ""
            visible: root.search !== null && root.compact && !root.isGivenToSearch
            Layout.leftMargin: -Theme.xs
            onClicked: root.focusSearch()
        }
        SearchField {
            id: field

            objectName: "searchField"
            Layout.fillWidth: root.isGivenToSearch
            Layout.leftMargin: root.isGivenToSearch ? 0 : Theme.xs
            placeholderText: root.search ? root.search.prompt : ""
            text: root.search ? root.search.text : ""
            visible: root.search !== null && (!root.compact || root.isSearching)
            onTextEdited: root.search.textEdited(text)
            onActiveFocusChanged: root.followFocus()
            onAccepted: root.search.resultsRequested()
            Keys.onDownPressed: root.search.resultsRequested()
            onLeaveRequested: root.leaveSearch()
        }
        PlainButton {
            text: Texts.localized("search.cancel", "Cancelar")
            visible: root.isGivenToSearch
            Layout.leftMargin: 6
            Layout.rightMargin: Theme.xs
            onClicked: root.leaveSearch()
        }
    }
    Divider {
        anchors.bottom: parent.bottom
        width: root.width
    }
}

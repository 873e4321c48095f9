// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// One page of a NavigationStack: a toolbar with title, actions and search, and the page's content below it.
FocusScope {
    id: root

    required property string title
    property string subtitle: ""
    /// Actions at the right of the toolbar, from left to right.
    property alias toolbarItems: toolbar.items
    /// What the page's search field shows and tells; none when null.
    property PageSearch search: null
    /// The content begins at the window's upper edge and shows through the toolbar.
    property bool runsUnderToolbar: false
    /// How much of the content's upper edge the toolbar covers.
    readonly property real coveredHeight: runsUnderToolbar ? toolbar.height : 0
    default property alias content: body.data

    readonly property NavigationStack stack: T.StackView.view as NavigationStack
    /// There is a page below this one.
    readonly property bool isPushed: T.StackView.index > 0
    /// The page is the uppermost one.
    readonly property bool isActive: T.StackView.status === T.StackView.Activating
        || T.StackView.status === T.StackView.Active

    signal appeared
    signal disappeared

    function focusSearch(): void {
        toolbar.focusSearch()
    }

    function goBack(): bool {
        if (root.isPushed)
            root.stack.pop()
        return root.isPushed
    }

    function leaveSearch(): bool {
        const isSearching = root.search !== null && root.search.isPresented
        if (isSearching)
            toolbar.leaveSearch()
        return isSearching
    }

    function show(): void {
        root.appeared()
        root.focus = true
    }

    onIsActiveChanged: isActive ? show() : disappeared()
    Keys.onEscapePressed: event => event.accepted = root.leaveSearch() || root.goBack()

    NavigationToolbar {
        id: toolbar

        // Before the content in the order of Tab, above it on the screen.
        z: 1
        width: root.width
        title: root.title
        subtitle: root.subtitle
        search: root.search
        translucent: root.runsUnderToolbar
        showsSidebarButton: root.stack !== null && root.stack.showsSidebarButton
        showsBackButton: root.isPushed
        onSidebarRequested: root.stack.sidebarRequested()
        onBackRequested: root.stack.pop()
    }
    Item {
        id: body

        anchors.fill: parent
        anchors.topMargin: root.runsUnderToolbar ? 0 : toolbar.height
    }
    Shortcut {
        sequence: "Ctrl+F"
        enabled: root.isActive && root.search !== null
        onActivated: root.focusSearch()
    }
    Shortcut {
        sequence: "Alt+Left"
        enabled: root.isActive && root.isPushed
        onActivated: root.stack.pop()
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// Events in sections, one under the other. One stop of the keyboard: arrows, Page Up and Down, Home and End move the
/// chosen row, Enter opens it. Bind currentIndex to the chosen row; the list itself only asks for another one.
ListView {
    id: root

    /// Titles of the sections by the ids that the model gives. An id that is not in here is a title itself.
    required property var sectionTitles
    required property string name
    /// A row opens something.
    property bool areRowsLinks: false
    property int hoveredRow: -1
    /// The keyboard moves the choice, so that it is shown where its focus is.
    property bool showsFocus: false
    readonly property int rowsOfAPage: Math.max(1, Math.floor(height / Theme.listRowHeight) - 1)

    /// The user wants this row to be the chosen one.
    signal rowChosen(row: int)
    /// The user opens this row.
    signal rowActivated(row: int)

    function choose(row: int): void {
        if (root.count === 0)
            return
        root.showsFocus = true
        root.rowChosen(Math.max(0, Math.min(root.count - 1, row)))
    }

    function press(row: int): void {
        // A button in the footer may hold the focus within the list. The chosen row may too, and would forget the press
        // if it lost it.
        if (root.activeFocus && root.Window.activeFocusItem !== root.currentItem)
            root.Window.activeFocusItem.focus = false
        root.forceActiveFocus(Qt.MouseFocusReason)
        root.showsFocus = false
        root.rowChosen(row)
    }

    function open(row: int): void {
        root.press(row)
        root.activate(row)
    }

    function activate(row: int): void {
        if (root.areRowsLinks && row >= 0)
            root.rowActivated(row)
    }

    clip: true
    topMargin: Theme.xs
    bottomMargin: Theme.xs
    currentIndex: -1
    activeFocusOnTab: true
    keyNavigationEnabled: false
    highlightMoveDuration: 0
    boundsBehavior: Flickable.DragOverBounds
    Accessible.role: Accessible.List
    Accessible.name: name
    onActiveFocusChanged: if (!activeFocus) showsFocus = false
    // The key that brought the focus here is released here.
    Keys.onReleased: event => showsFocus = showsFocus || event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab
    Keys.onUpPressed: choose(currentIndex - 1)
    Keys.onDownPressed: choose(currentIndex + 1)
    Keys.onReturnPressed: activate(currentIndex)
    Keys.onEnterPressed: activate(currentIndex)
    Keys.onPressed: event => {
        const step = {
            [Qt.Key_PageUp]: currentIndex - rowsOfAPage, [Qt.Key_PageDown]: currentIndex + rowsOfAPage,
            [Qt.Key_Home]: 0, [Qt.Key_End]: count - 1
        }[event.key]
        event.accepted = step !== undefined
        if (event.accepted)
            choose(step)
    }

    section.property: "section"
    // ComponentBehavior: Bound, which would know the list by its id, takes the headers away in Qt 6.4.
    // qmllint disable unqualified
    section.delegate: EarthquakeSectionHeader {
        width: ListView.view.width
        // A header that Qt 6.4 uses again learns its new section through the context alone, never through a property.
        title: root.sectionTitles[section] ?? section
    }
    delegate: EarthquakeListRow {
        required property int index

        objectName: "row " + index
        width: ListView.view.width
        isLink: root.areRowsLinks
        isChosen: ListView.isCurrentItem
        isFocused: isChosen && root.showsFocus
        showsDivider: ListView.nextSection === ListView.section && !isChosen && !hovered
            && root.currentIndex !== index + 1 && root.hoveredRow !== index + 1
        onHoveredChanged: root.hoveredRow = hovered ? index : -1
        onPressed: root.press(index)
        // Not at the press: it may begin a drag.
        onClicked: root.activate(index)
        Accessible.onPressAction: root.open(index)
    }
    // qmllint enable unqualified
    T.ScrollBar.vertical: OverlayScrollBar {}

    FocusRing {
        objectName: "listFocus"
        parent: root
        inside: true
        around: 0
        shown: root.showsFocus && root.currentIndex < 0
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Templates as T
import orvalia.Shared

/// Pages over one another, of which the uppermost shows: give it a NavigationPage as its initialItem. A page under
/// another one lives on, but has disappeared; it appears anew on return.
T.StackView {
    id: root

    /// The pages offer the button that brings the sidebar back.
    property bool showsSidebarButton: false

    /// That button was pressed.
    signal sidebarRequested

    /// Pushes the page of an event over the page `from`. The second press of a double click finds the page that the
    /// first one opened. `from` is no NavigationPage by type: the two types naming each other crash the engine.
    function openEvent(from: Item, page: Component, event: earthquakeReference): void {
        if (root.currentItem === from)
            root.push(page, { event: event })
    }

    component Slide: Transition {
        id: slide

        required property real fromX
        required property real toX
        required property bool comes

        NumberAnimation {
            property: "x"
            from: slide.fromX
            to: slide.toX
            duration: Theme.standard
            easing.bezierCurve: Theme.easeInOutCurve // qmllint disable type
        }
        NumberAnimation {
            property: "opacity"
            from: slide.comes ? 0 : 1
            to: slide.comes ? 1 : 0
            duration: Math.max(Theme.standard, Theme.quick)
            easing.bezierCurve: Theme.easeInOutCurve // qmllint disable type
        }
    }

    // Not within the stack, which takes away every press from what is in it while a page is on its way.
    MouseArea {
        parent: root.parent
        anchors.fill: parent
        z: 1
        enabled: root.depth > 1
        acceptedButtons: Qt.BackButton
        onClicked: root.pop()
    }

    clip: true
    focus: true
    pushEnter: Slide { fromX: Theme.slide; toX: 0; comes: true }
    pushExit: Slide { fromX: 0; toX: -Theme.slide; comes: false }
    popEnter: Slide { fromX: -Theme.slide; toX: 0; comes: true }
    popExit: Slide { fromX: 0; toX: Theme.slide; comes: false }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// Lets a list be refreshed by dragging or scrolling it beyond its top. Put it into the list.
Item {
    id: root

    required property ListView list
    required property bool isLoading
    /// How far the list is drawn beyond its top, in pixels.
    readonly property real drawn: list.dragging ? beyondTop : scrolled
    readonly property real beyondTop: Math.max(0, list.originY - list.topMargin - list.contentY)
    /// The distance that asks for a refresh.
    readonly property real enough: 64
    /// What the wheel has turned beyond the top in one go.
    property real scrolled: 0
    /// That go began with the list at its top. One that scrolls up to the top and goes on there asks for nothing.
    property bool beganAtTop: false

    signal refreshRequested

    function begin(): void {
        root.scrolled = 0
        root.beganAtTop = root.list.atYBeginning
    }

    // In the list's frame: the origin of its content moves as rows come in above.
    parent: list
    anchors.horizontalCenter: list.horizontalCenter
    y: Math.min(drawn, enough) - height
    width: Theme.hitSize
    height: Theme.hitSize
    visible: drawn > 0

    Connections {
        target: root.list

        // At the moment of the release the list still stands where it was drawn to.
        function onDraggingChanged(): void {
            if (!root.list.dragging && root.beyondTop >= root.enough)
                root.refreshRequested()
        }
    }
    WheelHandler {
        parent: root.list
        target: null
        blocking: false
        // One go: turns that follow one another.
        activeTimeout: 0.4
        onActiveChanged: root.begin()
        onWheel: event => {
            const before = root.scrolled
            root.scrolled = root.beganAtTop && root.list.atYBeginning ? Math.max(0, before + event.angleDelta.y / 4) : 0
            if (before < root.enough && root.scrolled >= root.enough)
                root.refreshRequested()
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.popover
        border.width: Theme.hair
        border.color: Theme.divider
    }
    Icon {
        anchors.centerIn: parent
        name: "arrow.clockwise"
        color: root.drawn >= root.enough ? Theme.accent : Theme.secondary
        rotation: Math.min(1, root.drawn / root.enough) * 270
        visible: !root.isLoading
    }
    Spinner {
        anchors.centerIn: parent
        name: Texts.localized("list.loading", "Cargando terremotos…")
        visible: root.isLoading
    }
}

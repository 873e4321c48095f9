// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Map
import orvalia.Shared

/// A map to look at and to move: base map, figures of the graticule, what is put into it, and the small controls in
/// its corners. Tab enters it; plus, minus, 0 and the arrows move it.
FocusScope { // qmllint disable
    id: root

    property alias controller: mapController
    /// What shows first.
    property alias region: mapController.region
    /// Pixels covered by a bar above and by a panel below.
    property real topCover: 0
    property real bottomCover: 0
    /// Whose titles the base map makes room for.
    property alias annotations: baseMap.annotations
    property alias isSharp: baseMap.isSharp
    /// The keyboard is here, and not because of a press of the pointer.
    readonly property bool hasKeyboardFocus: gestures.activeFocus && isKeyboardUsed
    property bool isKeyboardUsed: false
    /// What a screen reader calls the map.
    required property string name
    /// On a page that scrolls: the wheel moves the page until the map was clicked into, or with Ctrl.
    property alias wheelNeedsFocus: gestures.wheelNeedsFocus
    default property alias layers: layerHolder.data

    signal tapped(point position, bool byFinger)
    signal doubleTapped(point position)

    clip: true

    MapController {
        id: mapController

        size: Qt.size(root.width, root.height)
        topCover: root.topCover
        isStill: Theme.reducedMotion
    }
    BaseMapItem {
        id: baseMap

        anchors.fill: parent
        controller: mapController
        isDark: Theme.dark
        covers: [credit, scaleBar, zoomButtons]
    }
    Repeater {
        model: MapGraticule {
            controller: mapController
        }
        delegate: PlainText {
            id: figureText

            required property string figure
            required property real offset
            required property bool isMeridian

            x: isMeridian ? offset + 3 : 4
            y: isMeridian ? root.height - height - 2 : offset - height
            text: figure
            textStyle: Theme.swatch
            font.weight: Font.Normal
            color: Theme.mapFigures
            Accessible.ignored: true
        }
    }
    MapGestures {
        id: gestures

        anchors.fill: parent
        focus: true
        activeFocusOnTab: true
        controller: mapController
        onTapped: (position, byFinger) => root.takeTap(position, byFinger)
        onDoubleTapped: position => root.doubleTapped(position)
        Keys.onPressed: event => root.press(event)
        // The key that brought the focus here is released here.
        Keys.onReleased: event => root.isKeyboardUsed = root.isKeyboardUsed || event.key === Qt.Key_Tab
            || event.key === Qt.Key_Backtab
        Accessible.role: Accessible.Graphic
        Accessible.name: root.name
        Accessible.focusable: true
    }
    Item {
        id: layerHolder

        anchors.fill: parent
    }
    MapScaleBar {
        id: scaleBar

        /// Where the two do not fit side by side, the bar lies above the credit.
        readonly property bool isAbove: root.width < credit.width + mapController.widestScaleBar + 2 * Theme.l + Theme.s

        anchors { right: parent.right; bottom: isAbove ? credit.top : parent.bottom; rightMargin: Theme.l; bottomMargin: isAbove ? Theme.s : root.bottomCover + Theme.xl }
        objectName: "scaleBar"
        controller: mapController
    }
    MapCredit {
        id: credit

        objectName: "mapCredit"
        anchors { left: parent.left; bottom: parent.bottom; leftMargin: Theme.l; bottomMargin: root.bottomCover > 0 ? root.bottomCover + Theme.s : Theme.l }
    }
    MapZoomButtons {
        id: zoomButtons

        anchors { right: parent.right; top: parent.top; rightMargin: Theme.l; topMargin: root.topCover + Theme.l }
        controller: mapController
    }
    FocusRing {
        shown: root.hasKeyboardFocus
        inside: true
        around: 0
    }

    /// Doubles the scale, unless a marker lies there, which took the taps for itself.
    function zoomUnless(isTaken: bool, position: point): void {
        if (!isTaken)
            mapController.zoomInAt(position.x, position.y)
    }

    function takeTap(position: point, byFinger: bool): void {
        root.isKeyboardUsed = false
        gestures.forceActiveFocus(Qt.MouseFocusReason)
        root.tapped(position, byFinger)
    }

    function press(event: KeyEvent): void {
        root.isKeyboardUsed = true
        event.accepted = mapController.pressKey(event.key, event.modifiers)
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Map

/// What moves a map: drag with a gentle throw, wheel and pinch about the pointer. Taps are told, with their place.
Item {
    id: root

    required property MapController controller
    /// The wheel is for what lies around the map, unless the map has the focus or Ctrl is held.
    property bool wheelNeedsFocus: false

    signal tapped(point position, bool byFinger)
    signal doubleTapped(point position)

    DragHandler {
        id: dragHandler

        property vector2d last

        target: null
        dragThreshold: 3
        onActiveChanged: active ? root.beginDrag() : root.controller.release()
        onActiveTranslationChanged: root.continueDrag()
    }
    PinchHandler {
        id: pinchHandler

        target: null
        onActiveChanged: root.controller.grab()
        onActiveScaleChanged: root.controller.pinch(activeScale, centroid.position.x, centroid.position.y)
    }
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        enabled: !root.wheelNeedsFocus || root.activeFocus
        onWheel: event => root.controller.turnWheel(event.angleDelta.y, event.x, event.y)
    }
    WheelHandler {
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        acceptedModifiers: Qt.ControlModifier
        enabled: root.wheelNeedsFocus && !root.activeFocus
        onWheel: event => root.controller.turnWheel(event.angleDelta.y, event.x, event.y)
    }
    TapHandler {
        gesturePolicy: TapHandler.DragThreshold
        onTapped: (point, button) => root.tapped(point.position, point.device.type === PointerDevice.TouchScreen)
        onDoubleTapped: point => root.doubleTapped(point.position)
    }
    FrameAnimation {
        running: root.controller.isRunning && root.visible
        onTriggered: root.controller.advance(frameTime)
    }

    function beginDrag(): void {
        dragHandler.last = Qt.vector2d(0, 0)
        root.controller.grab()
    }

    function continueDrag(): void {
        const translation = dragHandler.activeTranslation
        root.controller.drag(translation.x - dragHandler.last.x, translation.y - dragHandler.last.y)
        dragHandler.last = translation
    }
}

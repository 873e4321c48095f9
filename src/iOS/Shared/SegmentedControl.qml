// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import orvalia.Shared

/// A few choices beside one another. One stop for Tab; arrows ask for the neighbour. It shows the choice `current` and
/// never changes it.
ControlItem {
    id: root

    required property PickerModel choices
    required property int current
    /// What the choice is about, for a screen reader.
    required property string name
    /// It fills a row: all segments are equally wide.
    property bool equalWidths: false

    /// The user wants the choice of this row.
    signal requested(int row)

    function requestNeighbour(step: int): void {
        const row = root.current + (root.LayoutMirroring.enabled ? -step : step)
        if (row >= 0 && row < root.choices.count)
            root.requested(row)
    }

    implicitWidth: row.implicitWidth + 4
    implicitHeight: Theme.pickerHeight
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : Theme.disabledOpacity
    Keys.onLeftPressed: root.requestNeighbour(-1)
    Keys.onRightPressed: root.requestNeighbour(1)
    Accessible.role: Accessible.PageTabList
    Accessible.name: name
    background: Rectangle {
        radius: Theme.radiusControl
        color: Theme.systemFill

        FocusRing {
            shown: root.visualFocus
        }
    }
    contentItem: Item {
        SegmentThumb {
            readonly property Item target: root.current >= 0 && segments.count > 0 ? segments.itemAt(root.current) : null

            x: target ? target.x + 2 : 0
            y: 2
            width: target ? target.width : 0
            height: root.height - 4
            visible: target !== null
        }
        Row {
            id: row

            x: 2
            y: 2

            Repeater {
                id: segments

                model: root.choices

                Segment {
                    height: root.height - 4
                    widthShare: root.equalWidths ? (root.width - 4) / Math.max(1, root.choices.count) : -1
                    chosen: index === root.current
                    onClicked: root.requested(index)
                }
            }
        }
    }
}

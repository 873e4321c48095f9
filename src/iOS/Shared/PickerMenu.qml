// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import orvalia.Shared

/// The choices of a picker, over the picker: the chosen one lies on the control where there is room.
Popover {
    id: root

    required property PickerModel choices
    required property int chosenRow
    property real minimumWidth: 0

    signal chosen(int row)

    function openAt(row: int): void {
        list.currentIndex = Math.max(0, row)
        root.open()
        list.forceActiveFocus()
        list.positionViewAtIndex(list.currentIndex, ListView.Contain)
    }

    function choose(row: int): void {
        root.close()
        if (row >= 0)
            root.chosen(row)
    }

    padding: 5
    x: -Theme.s - padding
    y: -padding - Math.max(0, chosenRow) * Theme.menuEntryHeight
    implicitWidth: Math.max(minimumWidth, widest.implicitWidth + leftPadding + rightPadding)
    contentItem: ListView {
        id: list

        implicitHeight: contentHeight
        model: root.choices
        clip: interactive
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        Keys.onReturnPressed: root.choose(currentIndex)
        Keys.onEnterPressed: root.choose(currentIndex)
        Keys.onSpacePressed: root.choose(currentIndex)
        Keys.onPressed: (event) => {
            if (event.key === Qt.Key_Home)
                currentIndex = 0
            else if (event.key === Qt.Key_End)
                currentIndex = count - 1
        }
        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.name
        delegate: PickerMenuRow {
            width: list.width
            ticked: index === root.chosenRow
            highlighted: ListView.isCurrentItem
            onHoveredChanged: if (hovered) list.currentIndex = index
            onClicked: root.choose(index)
        }
    }

    Column {
        id: widest

        visible: false

        Repeater {
            model: root.choices

            PickerMenuRow {}
        }
    }
}

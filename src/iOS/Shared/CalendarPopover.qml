// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import orvalia.Shared

/// A month to choose a day from. Arrows move by day and week, Page Up and Down by month, Home and End within the week.
Popover {
    id: root

    required property CalendarModel calendar

    signal chosen(date moment)

    function show(): void {
        root.calendar.showSelected()
        root.open()
        days.forceActiveFocus(Qt.TabFocusReason)
    }

    function choose(row: int): void {
        const moment = root.calendar.moment(row)
        if (isNaN(moment.getTime()))
            return
        root.close()
        root.chosen(moment)
    }

    padding: Theme.m
    contentItem: Column {
        width: days.width

        Item {
            width: days.width
            height: Theme.hitSizeSmall

            PlainText {
                x: Theme.s
                width: previous.x - x
                anchors.verticalCenter: parent.verticalCenter
                text: root.calendar.title
                textStyle: Theme.headline
            }
            IconButton {
                id: previous

                anchors.right: next.left
                size: Theme.hitSizeSmall
                iconSize: Theme.iconPicker
                iconName: "chevron.left"
                text: Texts.localized("calendar.previousMonth", "Mes anterior")
                onClicked: root.calendar.moveByMonths(-1)
            }
            IconButton {
                id: next

                anchors.right: parent.right
                size: Theme.hitSizeSmall
                iconSize: Theme.iconPicker
                iconName: "chevron.right"
                text: Texts.localized("calendar.nextMonth", "Mes siguiente")
                onClicked: root.calendar.moveByMonths(1)
            }
        }
        Row {
            Repeater {
                model: root.calendar.weekdays

                PlainText {
                    required property string modelData

                    width: 32
                    height: 26
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    text: modelData
                    textStyle: Theme.caption2
                    color: Theme.secondary
                }
            }
        }
        Grid {
            id: days

            columns: 7
            rowSpacing: 2
            activeFocusOnTab: true
            focus: true
            Accessible.role: Accessible.Table
            Accessible.name: root.calendar.title
            Keys.onLeftPressed: root.calendar.moveByDays(-1)
            Keys.onRightPressed: root.calendar.moveByDays(1)
            Keys.onUpPressed: root.calendar.moveByDays(-7)
            Keys.onDownPressed: root.calendar.moveByDays(7)
            Keys.onReturnPressed: root.choose(root.calendar.cursorRow)
            Keys.onEnterPressed: root.choose(root.calendar.cursorRow)
            Keys.onSpacePressed: root.choose(root.calendar.cursorRow)
            Keys.onPressed: (event) => {
                event.accepted = true
                switch (event.key) {
                case Qt.Key_PageUp: return root.calendar.moveByMonths(-1)
                case Qt.Key_PageDown: return root.calendar.moveByMonths(1)
                case Qt.Key_Home: return root.calendar.moveToWeekStart()
                case Qt.Key_End: return root.calendar.moveToWeekEnd()
                default: event.accepted = false
                }
            }

            Repeater {
                model: root.calendar

                CalendarDay {
                    hasCursor: days.activeFocus && index === root.calendar.cursorRow
                    onClicked: root.choose(index)
                }
            }
        }
    }
}

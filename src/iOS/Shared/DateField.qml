// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A day to choose, in a calendar that opens under the control, or by typing it in the locale's form. It shows `date`
/// and never changes it. `text` is what the day is for.
PressableControl {
    id: root

    required property date date
    /// Earliest and latest moments that may be chosen, to the day; an invalid date for no bound.
    property date minimum
    property date maximum

    /// The user wants this moment: the start of a day, or the bound that lies in it.
    signal requested(date moment)

    function commit(): void {
        const moment = calendarModel.momentOf(entry.text)
        entry.visible = false
        root.forceActiveFocus(Qt.TabFocusReason)
        if (!isNaN(moment.getTime()))
            root.requested(moment)
    }

    implicitHeight: Theme.pickerHeight
    leftPadding: Theme.m
    rightPadding: Theme.s
    opacity: enabled ? 1 : Theme.disabledOpacity
    onClicked: calendar.show()
    Keys.onDownPressed: calendar.show()
    Keys.onPressed: (event) => {
        if (/^\d$/.test(event.text)) {
            entry.begin(event.text)
            event.accepted = true
        }
    }
    Accessible.role: Accessible.ComboBox
    Accessible.name: text.length > 0 ? text + ": " + calendarModel.selectedText : calendarModel.selectedText
    background: BorderedGround {
        hovered: root.hovered
        pressed: root.pressed || calendar.opened
        focused: root.visualFocus || calendar.opened || entry.activeFocus
    }
    contentItem: Item {
        implicitWidth: label.implicitWidth + 10 + Theme.iconPicker + 2

        NumberText {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            text: calendarModel.selectedText
            color: Theme.primary
            font.family: Theme.fontFamily
            font.pixelSize: Theme.callout.size
            line: Theme.callout.line
            visible: !entry.visible
            Accessible.ignored: true
        }
        TextInput {
            id: entry

            function begin(first: string): void {
                text = first
                visible = true
                forceActiveFocus()
            }

            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - Theme.iconPicker - Theme.s
            visible: false
            clip: true
            maximumLength: 20
            color: Theme.primary
            font.family: Theme.fontFamily
            font.pixelSize: Theme.callout.size
            Accessible.role: Accessible.EditableText
            Accessible.name: root.text
            onActiveFocusChanged: if (!activeFocus) visible = false
            Keys.onReturnPressed: root.commit()
            Keys.onEnterPressed: root.commit()
            Keys.onEscapePressed: {
                visible = false
                root.forceActiveFocus(Qt.TabFocusReason)
            }
        }
        Icon {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.iconField
            height: Theme.iconField
            name: "calendar"
            color: Theme.secondary
        }
    }

    CalendarModel {
        id: calendarModel

        selected: root.date
        minimum: root.minimum
        maximum: root.maximum
    }
    CalendarPopover {
        id: calendar

        name: root.text
        calendar: calendarModel
        onChosen: (moment) => root.requested(moment)
    }
}

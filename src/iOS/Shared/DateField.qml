// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// A day to choose, in a calendar that opens under the control, or by typing it in the locale's form. It shows `date`
/// and never changes it. A typed text that is no day, or one out of bounds, stays in the field, which is then marked,
/// until it is mended or given up. `text` is what the day is for.
PressableControl {
    id: root

    required property date date
    /// Earliest and latest moments that may be chosen, to the day; an invalid date for no bound.
    property date minimum
    property date maximum
    /// A text is being typed, or stands there refused.
    property bool isTyping: false
    /// The typed text is no day that may be chosen.
    property bool isRefused: false
    readonly property string refusal: isRefused
        ? Texts.localized("calendar.invalid", "Fecha no válida. Ejemplo:") + " " + calendarModel.typedExample : ""

    /// The user wants this moment: another day at the time of day of `date`, or the bound that it would pass.
    signal requested(date moment)

    function beginTyping(first: string): void {
        entry.text = first
        root.isTyping = true
        entry.forceActiveFocus()
    }

    function endTyping(): void {
        root.isTyping = false
        root.isRefused = false
    }

    function commit(): void {
        const moment = calendarModel.momentOf(entry.text)
        root.isRefused = entry.text.length > 0 && isNaN(moment.getTime())
        if (root.isRefused)
            return
        root.endTyping()
        if (!isNaN(moment.getTime()))
            root.requested(moment)
    }

    function commitAndStay(): void {
        root.commit()
        if (!root.isTyping)
            root.forceActiveFocus(Qt.TabFocusReason)
    }

    function giveUp(): void {
        root.endTyping()
        root.forceActiveFocus(Qt.TabFocusReason)
    }

    function choose(moment: date): void {
        root.endTyping()
        root.requested(moment)
    }

    implicitHeight: Theme.pickerHeight
    leftPadding: Theme.m
    rightPadding: Theme.s
    opacity: enabled ? 1 : Theme.disabledOpacity
    onClicked: calendar.show()
    onVisibleChanged: if (!visible) endTyping()
    Keys.onDownPressed: calendar.show()
    Keys.onPressed: (event) => {
        event.accepted = calendarModel.isDigit(event.text)
        if (event.accepted)
            root.beginTyping(event.text)
    }
    Accessible.role: Accessible.ComboBox
    Accessible.name: text.length > 0 ? text + ": " + calendarModel.selectedText : calendarModel.selectedText
    background: BorderedGround {
        hovered: root.hovered
        pressed: root.pressed || calendar.opened
        focused: root.visualFocus || calendar.opened || entry.activeFocus

        Rectangle {
            anchors.fill: parent
            radius: Theme.radiusControl
            color: "transparent"
            border.width: Theme.hair
            border.color: Theme.destructive
            visible: root.isRefused
        }
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
            visible: !root.isTyping
            Accessible.ignored: true
        }
        TextInput {
            id: entry

            objectName: "typedDate"
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - Theme.iconPicker - Theme.s
            visible: root.isTyping
            clip: true
            maximumLength: 20
            color: Theme.primary
            selectionColor: Theme.selection
            selectedTextColor: Theme.primary
            font.family: Theme.fontFamily
            font.pixelSize: Theme.callout.size
            Accessible.role: Accessible.EditableText
            Accessible.name: root.text
            Accessible.description: root.refusal
            onTextEdited: root.isRefused = false
            // Not when the whole window loses the focus: the user may come back and type on.
            onActiveFocusChanged: if (!activeFocus && root.isTyping && Window.active) root.commit()
            Keys.onReturnPressed: root.commitAndStay()
            Keys.onEnterPressed: root.commitAndStay()
            Keys.onEscapePressed: root.giveUp()
        }
        Icon {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.iconField
            height: Theme.iconField
            name: root.isRefused ? "exclamationmark.triangle.fill" : "calendar"
            color: root.isRefused ? Theme.destructive : Theme.secondary
        }
    }

    TextTip {
        // Above: below may be the button that is waited for.
        y: -implicitHeight - Theme.s
        text: root.refusal
        delay: 0
        shown: root.isRefused
    }
    CalendarModel {
        id: calendarModel

        selected: root.date
        minimum: root.minimum
        maximum: root.maximum
    }
    CalendarPopover {
        id: calendar

        x: root.width - implicitWidth
        name: root.text
        calendar: calendarModel
        onChosen: (moment) => root.choose(moment)
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import orvalia.Shared

/// One choice out of several, in a menu that opens over the control. It shows the choice `current` and never changes
/// it. `text` is what the choice is about, for a screen reader.
PressableControl {
    id: root

    required property PickerModel choices
    /// Row of the choice in force; -1 for none.
    required property int current
    readonly property string currentText: choices.texts[current] ?? ""
    readonly property bool hasDot: current >= 0 && current < choices.count && choices.dots[current].a > 0

    /// The user wants the choice of this row.
    signal requested(int row)

    implicitHeight: Theme.pickerHeight
    leftPadding: Theme.m
    rightPadding: Theme.s
    opacity: enabled ? 1 : Theme.disabledOpacity
    onClicked: menu.openAt(root.current)
    Keys.onUpPressed: menu.openAt(root.current)
    Keys.onDownPressed: menu.openAt(root.current)
    Accessible.role: Accessible.ComboBox
    Accessible.name: text.length > 0 ? text + ": " + currentText : currentText
    background: BorderedGround {
        hovered: root.hovered
        pressed: root.pressed || menu.opened
        focused: root.visualFocus
    }
    contentItem: Item {
        implicitWidth: label.x + label.implicitWidth + Theme.s + Theme.iconPicker

        CategoryDot {
            id: dot

            anchors.verticalCenter: parent.verticalCenter
            color: root.hasDot ? root.choices.dots[root.current] : "transparent"
        }
        PlainText {
            id: label

            x: dot.visible ? dot.width + Theme.s : 0
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, parent.width - x - Theme.s - Theme.iconPicker)
            text: root.currentText
            textStyle: Theme.callout
            Accessible.ignored: true
        }
        Icon {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.iconPicker
            height: Theme.iconPicker
            name: "chevron.up.chevron.down"
            color: Theme.secondary
        }
    }

    PickerMenu {
        id: menu

        name: root.Accessible.name
        choices: root.choices
        chosenRow: root.current
        minimumWidth: root.width + 2 * Theme.s
        onChosen: (row) => root.requested(row)
    }
}

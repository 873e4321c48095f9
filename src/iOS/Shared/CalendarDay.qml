// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// One day of a calendar. `text` is its number, `name` the whole date.
PressableControl {
    id: root

    required property int index
    required text
    required property string name
    required property bool inMonth
    required property bool withinBounds
    required property bool today
    required property bool chosen
    property bool hasCursor: false

    implicitWidth: 32
    implicitHeight: 30
    focusPolicy: Qt.NoFocus
    enabled: withinBounds
    Accessible.name: name
    Accessible.selectable: true
    Accessible.selected: chosen
    background: StateTint {
        hovered: root.hovered
        pressed: root.pressed

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: Theme.accent
            visible: root.chosen
        }
        FocusRing {
            shown: root.hasCursor && !root.chosen
            inside: true
        }
    }
    contentItem: Item {
        NumberText {
            anchors.centerIn: parent
            text: root.text
            line: Theme.callout.line
            font.family: Theme.fontFamily
            font.pixelSize: Theme.callout.size
            font.weight: root.chosen || root.today ? Font.DemiBold : Font.Normal
            color: root.chosen ? Theme.textOnAccent
                : !root.withinBounds || !root.inMonth ? Theme.tertiary : root.today ? Theme.accent : Theme.primary
        }
    }
}

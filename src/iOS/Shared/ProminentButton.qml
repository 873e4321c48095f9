// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// The one button of a view that does what the view is for; in the accent, or in a magnitude's colour.
PressableControl {
    id: root

    /// A magnitude's colour; transparent for the accent.
    property color categoryColor: "transparent"
    readonly property bool inCategory: categoryColor.a > 0
    property string iconName: ""
    property alias textStyle: label.textStyle
    readonly property color foreground: inCategory ? Theme.textOnCategory : Theme.textOnAccent

    implicitHeight: Theme.buttonHeight
    horizontalPadding: 14
    opacity: enabled ? 1 : Theme.disabledOpacity
    background: Rectangle {
        radius: Theme.radiusControl
        color: root.inCategory ? root.categoryColor
            : root.pressed ? Theme.accentPressed : root.hovered ? Theme.accentHover : Theme.accent

        StateTint {
            anchors.fill: parent
            hovered: root.inCategory && root.hovered
            pressed: root.inCategory && root.pressed
            hoverColor: Theme.categoryHover
            pressedColor: Theme.categoryPressed
        }
        FocusRing {
            shown: root.visualFocus
        }
    }
    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight

        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.s

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.iconField
                height: Theme.iconField
                name: root.iconName
                color: root.foreground
                visible: root.iconName.length > 0
            }
            PlainText {
                id: label

                anchors.verticalCenter: parent.verticalCenter
                text: root.text
                color: root.foreground
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import QtQuick.Layouts
import orvalia.Shared

/// One figure of the callout: icon, value and what it is. Shares the width evenly with its neighbours.
ColumnLayout {
    id: root

    required property string icon
    required property string value
    required property string label

    Layout.fillWidth: true
    Layout.preferredWidth: 1
    spacing: Theme.xxs
    Accessible.role: Accessible.StaticText
    Accessible.name: root.label + ": " + DisplayText.oneLine(root.value)

    Icon {
        Layout.alignment: Qt.AlignHCenter
        Layout.preferredWidth: Theme.iconField
        Layout.preferredHeight: Theme.iconField
        name: root.icon
        color: Theme.secondary
    }
    OutsideText {
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        content: root.value
        textStyle: Theme.subheadline
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }
    PlainText {
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        text: root.label
        textStyle: Theme.caption2
        color: Theme.secondary
        Accessible.ignored: true
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// One choice of a SegmentedControl.
PressableControl {
    id: root

    required property int index
    required text
    property bool chosen: false
    /// Width of each of equally wide segments; negative to be as wide as the text needs.
    property real widthShare: -1

    width: widthShare >= 0 ? widthShare : implicitWidth
    // As wide as it is when chosen, so that nothing moves.
    implicitWidth: Math.ceil(measure.implicitWidth) + 18
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.RadioButton
    Accessible.checkable: true
    Accessible.checked: chosen
    Accessible.onToggleAction: root.pressForReader()
    contentItem: PlainText {
        text: root.text
        textStyle: Theme.callout
        font.weight: root.chosen ? Font.DemiBold : Font.Normal
        verticalAlignment: Text.AlignVCenter
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }

    PlainText {
        id: measure

        text: root.text
        textStyle: Theme.callout
        font.weight: Font.DemiBold
        visible: false
    }
}

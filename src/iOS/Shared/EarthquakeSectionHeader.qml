// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// Title of a section of an EarthquakeList.
Item {
    id: root

    // Not required: Qt 6.4 makes no second section header of a component with required properties.
    property string title: ""

    implicitHeight: Theme.sectionHeaderHeight

    PlainText {
        objectName: "sectionTitle"
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 6
        x: Theme.xl
        width: root.width - 2 * Theme.xl
        text: root.title
        textStyle: Theme.subheadline
        font.weight: Font.DemiBold
        color: Theme.secondary
        Accessible.role: Accessible.Heading
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// Whose data the base map is made of.
Rectangle {
    id: root

    width: creditText.implicitWidth + 2 * Theme.xs + Theme.xs
    height: creditText.implicitHeight + Theme.xs
    radius: Theme.radiusCheck
    color: Theme.material
    Accessible.role: Accessible.StaticText
    Accessible.name: creditText.text

    PlainText {
        id: creditText

        anchors.centerIn: parent
        text: Texts.localized("map.credit", "© IGN CC BY 4.0 · GSHHG · Natural Earth · ETOPO5")
        textStyle: Theme.caption2
        color: Theme.secondary
        Accessible.ignored: true
    }
}

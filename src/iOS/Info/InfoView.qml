// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Info
import orvalia.Shared

/// The information sheet: how strong is strong, what to do, and where the data comes from.
Sheet {
    id: root

    title: Texts.localized("tab.info", "Información")
    ground: Theme.window
    hasCloseButton: true
    preferredWidth: 560
    maximumHeight: 600
    edge: Theme.l

    Column {
        x: Theme.l
        width: parent.width - 2 * Theme.l
        topPadding: Theme.l
        bottomPadding: Theme.xxl
        spacing: Theme.xxl

        PlainText {
            width: parent.width
            wrapMode: Text.Wrap
            color: Theme.secondary
            text: Texts.localized("info.intro",
                "La escala de Mercalli mide la intensidad de un terremoto según sus efectos sobre las personas, los "
                + "edificios y el entorno natural. La app también muestra eventos micro (< 2.0) que no alcanzan el "
                + "umbral de la escala Mercalli y son detectados únicamente por instrumentos sísmicos.")
        }
        Column {
            width: parent.width
            spacing: Theme.m

            Repeater {
                model: MagnitudeScale.count

                MercalliCard {
                    required property int index

                    width: parent.width
                    category: MagnitudeScale.categoryAt(index)
                }
            }
        }
        SafetyTipsSection {
            width: parent.width
        }
        Column {
            width: parent.width
            spacing: Theme.xs

            Divider {
                width: parent.width
            }
            PlainText {
                width: parent.width
                wrapMode: Text.Wrap
                textStyle: Theme.caption
                color: Theme.tertiary
                text: Texts.localized("info.source",
                    "Datos proporcionados por el Instituto Geográfico Nacional (IGN) de España.")
            }
            PlainText {
                width: parent.width
                textStyle: Theme.caption
                color: Theme.tertiary
                text: "www.ign.es"
            }
        }
    }
}

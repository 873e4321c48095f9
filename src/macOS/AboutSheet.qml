// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared

/// Which program this is, under which licence, and whose work it stands on.
Sheet {
    id: root

    component Paragraph: PlainText {
        x: Theme.xl
        width: parent.width - 2 * Theme.xl
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        color: Theme.secondary
    }
    component Credit: Paragraph {
        textStyle: Theme.callout
    }

    title: Texts.localized("menu.about", "Acerca de Terremotos")
    ground: Theme.window
    hasCloseButton: true

    Item { width: 1; height: Theme.xxl }
    Icon {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 64
        height: 64
        name: "orvalia"
    }
    Item { width: 1; height: Theme.m }
    Paragraph {
        text: Texts.localized("Terremotos", "Terremotos")
        textStyle: Theme.title2
        color: Theme.primary
    }
    Paragraph {
        text: Texts.localized("about.version", "Versión") + " " + Application.version
    }
    Item { width: 1; height: Theme.l }
    Paragraph {
        text: Texts.localized("about.licence", "Software libre bajo la Licencia Pública General GNU, versión 3 o posterior. Sin garantía alguna.")
    }
    Item { width: 1; height: Theme.l }
    Column {
        width: parent.width
        spacing: Theme.s

        Credit {
            text: Texts.localized("about.credits", "Datos de terremotos: Instituto Geográfico Nacional (IGN).")
        }
        Credit {
            text: Texts.localized("about.coast", "Costa: GSHHG 2.3.7 (Wessel y Smith, 1996; LGPL-3.0-or-later), modificada.")
        }
        Credit {
            text: Texts.localized("about.municipalities", "Límites municipales y ajuste de la costa: obra derivada de Líneas Límite Jurisdiccionales, CC BY 4.0 ign.es (Instituto Geográfico Nacional), a través de es-atlas (MIT, © Martín González); generalizados y suavizados.")
        }
        Credit {
            text: Texts.localized("about.countries", "Fronteras: Natural Earth (dominio público), a través de world-atlas (ISC, © Michael Bostock).")
        }
        Credit {
            text: Texts.localized("about.seafloor", "Relieve submarino esquemático: ETOPO5, NOAA/NGDC 1988. No apto para la navegación.")
        }
        Credit {
            text: Texts.localized("about.type", "Tipografía: Inter (SIL Open Font License)")
        }
    }
    Item { width: 1; height: Theme.xxl }
}

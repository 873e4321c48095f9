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
    Paragraph {
        text: Texts.localized("about.credits", "Datos de terremotos: Instituto Geográfico Nacional (IGN).")
    }
    Paragraph {
        text: Texts.localized("about.map", "Mapa: © IGN CC BY 4.0 · GSHHG · Natural Earth · ETOPO5")
    }
    Paragraph {
        text: Texts.localized("about.type", "Tipografía: Inter (SIL Open Font License)")
    }
    Item { width: 1; height: Theme.xxl }
}

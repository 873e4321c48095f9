// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Info
import orvalia.Shared

/// What to do before, during and after.
Column {
    id: root

    spacing: Theme.m

    PlainText {
        width: parent.width
        textStyle: Theme.title2
        font.weight: Font.Bold
        text: Texts.localized("info.safety.title", "Consejos de seguridad")
    }
    SafetyTipRow {
        width: parent.width
        iconName: "figure.walk"
        title: Texts.localized("info.tip1.title", "Mantén la calma")
        detail: Texts.localized("info.tip1.detail", "Aleja el pánico y actúa con serenidad.")
    }
    SafetyTipRow {
        width: parent.width
        iconName: "house.fill"
        title: Texts.localized("info.tip2.title", "Alejate de ventanas")
        detail: Texts.localized("info.tip2.detail",
                                "Protégete bajo una mesa resistente o en el umbral de una puerta.")
    }
    SafetyTipRow {
        width: parent.width
        iconName: "mappin.and.ellipse"
        title: Texts.localized("info.tip3.title", "Punto de encuentro")
        detail: Texts.localized("info.tip3.detail",
                                "Acude a un lugar abierto, alejado de edificios y cables eléctricos.")
    }
    SafetyTipRow {
        width: parent.width
        iconName: "ant.fill"
        title: Texts.localized("info.tip4.title", "Tras el sismo")
        detail: Texts.localized("info.tip4.detail", "Espera réplicas y evita entrar en edificios dañados.")
    }
}

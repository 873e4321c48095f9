// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Shared
import orvalia.Stats

/// The mean depth and the three bands.
Column {
    id: root

    required property string averageDepth
    required property depthFigure shallow
    required property depthFigure intermediate
    required property depthFigure deep

    spacing: 14

    Row {
        spacing: Theme.xs

        NumberText {
            id: mean

            text: root.averageDepth
            color: Theme.primary
            font.family: Theme.fontFamily
            font.pixelSize: Theme.title2.size
            font.weight: Font.Bold
            line: Theme.title2.line
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        PlainText {
            // Both stand on the same line of writing.
            y: mean.height - height - 1
            textStyle: Theme.subheadline
            color: Theme.secondary
            text: Texts.localized("stats.depth.avgUnit", "km de profundidad media")
        }
    }
    Column {
        width: root.width
        spacing: 10

        DepthBandRow {
            width: parent.width
            label: Texts.localized("stats.depth.shallow", "Superficial")
            detail: Texts.localized("stats.depth.shallow.range", "< 30 km")
            figure: root.shallow
            color: Theme.depthShallow
        }
        DepthBandRow {
            width: parent.width
            label: Texts.localized("stats.depth.intermediate", "Intermedio")
            detail: Texts.localized("stats.depth.intermediate.range", "30 – 70 km")
            figure: root.intermediate
            color: Theme.depthIntermediate
        }
        DepthBandRow {
            width: parent.width
            label: Texts.localized("stats.depth.deep", "Profundo")
            detail: Texts.localized("stats.depth.deep.range", "> 70 km")
            figure: root.deep
            color: Theme.depthDeep
        }
    }
}

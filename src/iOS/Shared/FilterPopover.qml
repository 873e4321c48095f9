// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import orvalia.Shared

/// The choice of magnitudes and dates that the recent list and the map offer. It only tells what was chosen, and stays
/// open until it is dismissed.
Popover {
    id: root

    /// A MagnitudeFilter choice.
    required property int magnitudeFilter
    /// A DateFilter choice.
    required property int dateFilter

    signal magnitudeFilterChosen(choice: int)
    signal dateFilterChosen(choice: int)
    signal resetRequested

    component Header: Column {
        id: header

        required property string text

        width: parent.width
        topPadding: Theme.l

        PlainText {
            x: Theme.l
            width: header.width - 2 * Theme.l
            text: header.text
            textStyle: Theme.headline
            Accessible.role: Accessible.Heading
        }
        Divider {
            width: header.width
        }
    }
    component Choices: Repeater {
        id: choices

        required property int chosen

        signal choiceMade(choice: int)

        FilterRow {
            required property int index
            required property string label

            width: parent.width
            text: label
            isChosen: index === choices.chosen
            onClicked: choices.choiceMade(index)
        }
    }

    name: Texts.localized("menu.openFilter", "Abrir filtros")
    bottomPadding: Theme.xs
    contentItem: FocusScope {
        objectName: "filterPopover"
        implicitWidth: 220
        implicitHeight: column.implicitHeight

        Column {
            id: column

            width: parent.width

            Header { text: Texts.localized("filter.magnitude.header", "Magnitude") }
            Choices {
                model: MagnitudeFilterModel {}
                chosen: root.magnitudeFilter
                onChoiceMade: choice => root.magnitudeFilterChosen(choice)
            }
            Divider { width: parent.width }
            Header { text: Texts.localized("filter.date.header", "Date") }
            Choices {
                model: DateFilterModel {}
                chosen: root.dateFilter
                onChoiceMade: choice => root.dateFilterChosen(choice)
            }
            Item { width: 1; height: Theme.xs }
            Divider { width: parent.width }
            Item {
                width: parent.width
                height: Theme.body.line + 2 * Theme.l

                PlainButton {
                    id: reset

                    anchors.verticalCenter: parent.verticalCenter
                    x: Theme.l - leftPadding
                    text: Texts.localized("filter.reset", "Reset Filters")
                    destructive: true
                    onClicked: root.resetRequested()
                }
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
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

    /// In a low window the choices scroll, and follow the focus.
    function reveal(item: Item): void {
        const top = item.mapToItem(column, 0, 0).y
        page.contentY = Math.max(top + item.height - page.height, Math.min(page.contentY, top))
    }

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
            onActiveFocusChanged: if (activeFocus) root.reveal(this)
            onClicked: choices.choiceMade(index)
        }
    }

    name: Texts.localized("menu.openFilter", "Abrir filtros")
    bottomPadding: Theme.xs
    contentItem: FocusScope {
        objectName: "filterPopover"
        implicitWidth: 220
        implicitHeight: column.implicitHeight

        Flickable {
            id: page

            anchors.fill: parent
            contentWidth: width
            contentHeight: column.implicitHeight
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            T.ScrollBar.vertical: OverlayScrollBar {}

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
                        weight: Font.Normal
                        onActiveFocusChanged: if (activeFocus) root.reveal(parent)
                        onClicked: root.resetRequested()
                    }
                }
            }
        }
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Gallery
import orvalia.Shared

/// Every control of the program in every state that a still can show; menus, calendar, sheet and question open at a
/// press.
Rectangle {
    id: root

    width: 1100
    height: 740
    color: Theme.window

    Column {
        anchors.fill: parent
        anchors.margins: 28
        spacing: 0

        GallerySection {
            title: "Toolbar icon"

            IconButton { iconName: "arrow.clockwise"; text: "Actualizar" }
            IconButton { iconName: "line.3.horizontal.decrease.circle"; text: "Filtro" }
            IconButton { iconName: "line.3.horizontal.decrease.circle.fill"; text: "Filtro"; active: true }
            IconButton {
                objectName: "menuButton"
                iconName: "line.3.horizontal"
                text: "Menú"
                open: true
                onClicked: menu.popup(this, 0, height)
            }
            IconButton { iconName: "arrow.clockwise"; text: "Actualizar"; enabled: false }
            IconButton { iconName: "arrow.clockwise"; text: "Actualizar"; Component.onCompleted: forceActiveFocus(Qt.TabFocusReason) }
            Column {
                spacing: 2

                Icon { width: 18; height: 18; name: "arrow.clockwise"; color: Theme.tertiary }
                CooldownBar { progress: 0.4 }
            }
            Spinner { name: "Cargando" }
            Spinner { name: "Cargando"; size: 28 }
        }
        GallerySection {
            title: "Search"

            SearchField { objectName: "search"; placeholderText: "Buscar por localización" }
            SearchField { placeholderText: "Buscar por localización"; text: "mazo" }
        }
        GallerySection {
            title: "Type"

            PlainText { text: "title"; textStyle: Theme.title }
            PlainText { text: "title2"; textStyle: Theme.title2 }
            PlainText { text: "title3"; textStyle: Theme.title3 }
            PlainText { text: "headline"; textStyle: Theme.headline }
            PlainText { text: "body"; textStyle: Theme.body }
            PlainText { text: "callout"; textStyle: Theme.callout }
            PlainText { text: "subheadline"; textStyle: Theme.subheadline }
            PlainText { text: "caption"; textStyle: Theme.caption }
            PlainText { text: "caption2"; textStyle: Theme.caption2 }
            NumberText {
                text: "0123456789"
                color: Theme.primary
                line: Theme.title.line
                font.family: Theme.fontFamily
                font.pixelSize: Theme.title2.size
                font.weight: Font.Bold
            }
            Column {
                NumberText { text: "11:11"; font.family: Theme.fontFamily; font.pixelSize: 12; line: 16; color: Theme.secondary }
                NumberText { text: "08:48"; font.family: Theme.fontFamily; font.pixelSize: 12; line: 16; color: Theme.secondary }
                PlainText { text: "11:11"; textStyle: Theme.caption; color: Theme.secondary }
            }
        }
        GallerySection {
            title: "Button"

            BorderedButton { text: "Cancelar" }
            BorderedButton { text: "Cancelar"; enabled: false }
            BorderedButton { text: "Borrar filtro"; destructive: true }
            ProminentButton { objectName: "sheetButton"; text: "Aplicar"; onClicked: sheet.open() }
            ProminentButton { text: "Detalle"; categoryColor: GalleryChoices.categories.dots[1] }
            ProminentButton { text: "Aplicar"; enabled: false }
            PlainButton { objectName: "questionButton"; text: "Open Settings"; onClicked: question.open() }
            PlainButton { text: "Reset"; destructive: true }
        }
        GallerySection {
            title: "Switch, segments"

            ToggleSwitch { text: "Alerts"; on: false }
            ToggleSwitch { text: "Alerts"; on: true }
            ToggleSwitch { text: "Alerts"; on: true; enabled: false }
            SegmentedControl { name: "Radius"; choices: GalleryChoices.radii; current: 1 }
            Picker { text: "Frequency"; choices: GalleryChoices.intervals; current: 1 }
            Picker { objectName: "picker"; text: "Threshold"; choices: GalleryChoices.categories; current: 2 }
            DateField { objectName: "date"; text: "From"; date: new Date(2021, 8, 19, 12); minimum: new Date(2021, 8, 3) }
        }
        Row {
            spacing: 20

            FormColumn {
                width: 520

                FormSection {
                    header: "Alerts"
                    footer: "Receive alerts when earthquakes are detected in the Canary Islands."

                    FormRow {
                        label: "Notifications"
                        iconName: "bell.fill"

                        ToggleSwitch { text: "Notifications"; on: true }
                    }
                    FormRow {
                        label: "Minimum threshold"

                        Picker { text: "Threshold"; choices: GalleryChoices.categories; current: 2 }
                    }
                    FormCell {
                        SegmentedControl {
                            width: parent.width
                            equalWidths: true
                            name: "Radius"
                            choices: GalleryChoices.radii
                            current: 1
                        }
                    }
                }
            }
            FloatingGround {
                width: 260
                height: 200

                EmptyState {
                    anchors.fill: parent
                    iconName: "waveform.badge.exclamationmark"
                    title: "Sin terremotos"
                    description: "No hay terremotos que mostrar."
                }
            }
        }
    }

    ActionMenu {
        id: menu

        title: "Menu"

        ActionMenuItem { text: "Actualizar terremotos"; shortcutText: "Ctrl+R" }
        ActionMenuItem { text: "Ajustes"; shortcutText: "Ctrl+," }
        ActionMenuDivider {}
        ActionMenu {
            title: "Navegar"

            ActionMenuItem { text: "Mapa"; shortcutText: "Ctrl+3" }
        }
        ActionMenuItem { text: "Salir"; enabled: false }
    }
    Sheet {
        id: sheet

        title: "Filtrar histórico"
        buttons: [
            BorderedButton { text: "Cancelar" },
            ProminentButton { text: "Aplicar" }
        ]

        FormColumn {
            width: parent.width

            FormSection {
                header: "Tipo de filtro"

                FormRow {
                    label: "Modo"

                    SegmentedControl { name: "Modo"; choices: GalleryChoices.radii; current: 2 }
                }
            }
            FormSection {
                header: "Desde"

                FormRow {
                    label: "Fecha inicio"

                    DateField { text: "From"; date: new Date(2021, 8, 19, 12) }
                }
            }
        }
    }
    QuestionDialog {
        id: question

        iconName: "location.fill"
        question: "¿Permitir que orvalia use tu ubicación?"
        explanation: "Solo sirve para avisarte de sismos dentro del radio elegido. La posición no sale de este equipo."
        agreeText: "Permitir"
        refuseText: "No permitir"
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import orvalia.Historico
import orvalia.Shared

/// Narrows the history to a year, a month or a range of days. Nothing that is changed here counts before it is applied.
Sheet {
    id: root

    required property HistoricoViewModel viewModel
    /// No field holds a text that it has refused.
    readonly property bool mayApply: !startField.isRefused && !endField.isRefused

    function apply(): void {
        if (root.mayApply)
            form.apply()
    }

    title: Texts.localized("filter.title", "Filtrar histórico")
    onConfirmRequested: root.apply()
    buttons: [
        BorderedButton {
            text: Texts.localized("filter.cancel", "Cancelar")
            onClicked: root.dismissRequested()
        },
        ProminentButton {
            text: Texts.localized("filter.apply", "Aplicar")
            enabled: root.mayApply
            onClicked: root.apply()
        }
    ]

    Behavior on height {
        enabled: root.opened
        NumberAnimation {
            duration: Theme.springSelect
            easing.type: Easing.OutQuad
        }
    }

    HistoricoFilterForm {
        id: form

        viewModel: root.viewModel
        onDismissed: root.dismissRequested()
    }
    FormColumn {
        width: parent.width

        FormSection {
            header: Texts.localized("filter.type", "Tipo de filtro")

            FormRow {
                id: modeRow

                /// The segments would leave no room for the label.
                readonly property bool isTight: segments.implicitWidth > 0.8 * width

                label: Texts.localized("filter.mode", "Modo")

                SegmentedControl {
                    id: segments

                    objectName: "filterMode"
                    focus: !modeRow.isTight
                    visible: !modeRow.isTight
                    name: Texts.localized("filter.mode", "Modo")
                    choices: form.modes
                    current: form.mode
                    onRequested: row => form.mode = row
                }
                Picker {
                    focus: modeRow.isTight
                    visible: modeRow.isTight
                    text: modeRow.label
                    choices: form.modes
                    current: form.mode
                    onRequested: row => form.mode = row
                }
            }
        }
        FormSection {
            header: Texts.localized("filter.year", "Año")
            visible: form.mode === HistoricoFilterForm.YearMonth

            FormRow {
                label: Texts.localized("filter.year", "Año")

                Picker {
                    text: Texts.localized("filter.year", "Año")
                    choices: form.years
                    current: form.yearRow
                    enterPresses: false
                    onEntered: root.apply()
                    onRequested: row => form.yearRow = row
                }
            }
        }
        FormSection {
            header: Texts.localized("filter.month", "Mes (opcional)")
            visible: form.mode === HistoricoFilterForm.YearMonth && form.hasYear

            FormRow {
                label: Texts.localized("filter.month", "Mes")

                Picker {
                    text: Texts.localized("filter.month", "Mes")
                    choices: form.months
                    current: form.monthRow
                    enterPresses: false
                    onEntered: root.apply()
                    onRequested: row => form.monthRow = row
                }
            }
        }
        FormSection {
            header: Texts.localized("filter.from", "Desde")
            visible: form.mode === HistoricoFilterForm.CustomRange

            FormRow {
                label: Texts.localized("filter.startDate", "Fecha inicio")

                DateField {
                    id: startField

                    text: Texts.localized("filter.startDate", "Fecha inicio")
                    date: form.rangeStart
                    maximum: form.rangeEnd
                    enterPresses: false
                    onEntered: root.apply()
                    onRequested: moment => form.rangeStart = moment
                }
            }
        }
        FormSection {
            header: Texts.localized("filter.to", "Hasta")
            visible: form.mode === HistoricoFilterForm.CustomRange

            FormRow {
                label: Texts.localized("filter.endDate", "Fecha fin")

                DateField {
                    id: endField

                    text: Texts.localized("filter.endDate", "Fecha fin")
                    date: form.rangeEnd
                    minimum: form.rangeStart
                    enterPresses: false
                    onEntered: root.apply()
                    onRequested: moment => form.rangeEnd = moment
                }
            }
        }
        FormSection {
            visible: form.canClear

            FormButton {
                text: Texts.localized("filter.clear", "Borrar filtro")
                destructive: true
                onClicked: form.clear()
            }
        }
    }
}

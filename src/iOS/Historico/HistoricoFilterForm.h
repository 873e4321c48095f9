// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/ViewModels/HistoricoViewModel.h"
#include "iOS/Shared/PickerModel.h"

#include <QDateTime>
#include <QObject>
#include <QtQmlIntegration>

/// What the filter sheet of the history holds: a copy of the filter in force to change at will. The history's model
/// learns of it by apply() and clear() alone. Made anew by the QML with its sheet, and dies with it.
class HistoricoFilterForm : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// Outlives the form. The form begins with the filter that is in force there when this is set.
    Q_PROPERTY(HistoricoViewModel *viewModel READ viewModel WRITE setViewModel REQUIRED)
    Q_PROPERTY(Mode mode READ mode WRITE setMode NOTIFY changed)
    /// In the order of Mode.
    Q_PROPERTY(PickerModel *modes READ modes CONSTANT)
    /// No year, then the years that have events.
    Q_PROPERTY(PickerModel *years READ years CONSTANT)
    /// The whole year, then the twelve months.
    Q_PROPERTY(PickerModel *months READ months CONSTANT)
    /// -1 when the chosen year has no events.
    Q_PROPERTY(int yearRow READ yearRow WRITE setYearRow NOTIFY changed)
    Q_PROPERTY(int monthRow READ monthRow WRITE setMonthRow NOTIFY changed)
    Q_PROPERTY(bool hasYear READ hasYear NOTIFY changed)
    Q_PROPERTY(QDateTime rangeStart READ rangeStart WRITE setRangeStart NOTIFY changed)
    Q_PROPERTY(QDateTime rangeEnd READ rangeEnd WRITE setRangeEnd NOTIFY changed)
    /// The model has a filter in force, whatever the form holds.
    Q_PROPERTY(bool canClear READ canClear NOTIFY changed)

public:
    /// Which of the form's choices counts.
    enum class Mode { None, YearMonth, CustomRange };
    Q_ENUM(Mode)

    /// Without a filter, and with a range from the start of today to now.
    explicit HistoricoFilterForm(QObject *parent = nullptr);

    HistoricoViewModel *viewModel() const { return m_viewModel; }
    Mode mode() const { return m_mode; }
    PickerModel *modes() { return &m_modes; }
    PickerModel *years() { return &m_years; }
    PickerModel *months() { return &m_months; }
    int yearRow() const;
    int monthRow() const { return m_selectedMonth.value_or(0); }
    bool hasYear() const { return m_selectedYear.has_value(); }
    QDateTime rangeStart() const;
    QDateTime rangeEnd() const;
    bool canClear() const;

    void setViewModel(HistoricoViewModel *viewModel);
    void setMode(Mode mode);
    /// The month stays chosen with another year, and without one.
    void setYearRow(int row);
    void setMonthRow(int row);
    void setRangeStart(const QDateTime &start);
    void setRangeEnd(const QDateTime &end);

    /// Take what the form holds now, or nothing, and post its way into the model; `dismissed` follows once the first
    /// page of the result is loaded.
    Q_INVOKABLE void apply() const;
    Q_INVOKABLE void clear() const;

Q_SIGNALS:
    /// Something of the above may have changed.
    void changed();
    void dismissed() const;

private:
    void syncFromViewModel();
    void listYears();
    HistoricoViewModel::DateFilterMode resolveFilter() const;
    void post(const HistoricoViewModel::DateFilterMode &filter) const;

    HistoricoViewModel *m_viewModel = nullptr;
    Mode m_mode = Mode::None;
    std::optional<int> m_selectedYear;
    /// 1 to 12.
    std::optional<int> m_selectedMonth;
    Instant m_rangeStart;
    Instant m_rangeEnd;
    PickerModel m_modes;
    PickerModel m_years;
    PickerModel m_months;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Historico/HistoricoFilterForm.h"

#include "Platform/Clock/Clock.h"
#include "Platform/Support/Platform.h"
#include "Platform/Text/Localization.h"
#include "Platform/Text/UserCalendar.h"
#include "iOS/Shared/InstantDate.h"

#include <QPointer>

#include <algorithm>

namespace {
QList<PickerChoice> modeChoices()
{
    return {{localized("filter.none", QStringLiteral("Sin filtro"))},
            {localized("filter.yearmonth", QStringLiteral("Año / Mes"))},
            {localized("filter.range", QStringLiteral("Rango personalizado"))}};
}

QList<PickerChoice> monthChoices()
{
    QList<PickerChoice> choices{{localized("filter.fullYear", QStringLiteral("Todo el año"))}};
    for (const QString &name : UserCalendar::monthNames())
        choices.append({name});
    return choices;
}
}

HistoricoFilterForm::HistoricoFilterForm(QObject *parent)
    : QObject(parent)
    , m_rangeStart(UserCalendar::startOfDay(Platform::current().clock.now()))
    , m_rangeEnd(Platform::current().clock.now())
    , m_modes(modeChoices(), nullptr)
    , m_months(monthChoices(), nullptr)
{
}

int HistoricoFilterForm::yearRow() const
{
    if (!m_selectedYear)
        return 0;
    const std::vector<int> &years = m_viewModel->availableYears();
    const auto found = std::find(years.begin(), years.end(), *m_selectedYear);
    return found == years.end() ? -1 : int(found - years.begin()) + 1;
}

QDateTime HistoricoFilterForm::rangeStart() const
{
    return dateOf(m_rangeStart);
}

QDateTime HistoricoFilterForm::rangeEnd() const
{
    return dateOf(m_rangeEnd);
}

bool HistoricoFilterForm::canClear() const
{
    // The sheet's bindings are evaluated in any order, also before the one that gives the model.
    return m_viewModel && !std::holds_alternative<HistoricoViewModel::None>(m_viewModel->filterMode());
}

void HistoricoFilterForm::setViewModel(HistoricoViewModel *viewModel)
{
    m_viewModel = viewModel;
    connect(viewModel, &HistoricoViewModel::availableYearsChanged, this, &HistoricoFilterForm::listYears);
    connect(viewModel, &HistoricoViewModel::filterModeChanged, this, &HistoricoFilterForm::changed);
    syncFromViewModel();
    listYears();
}

void HistoricoFilterForm::setMode(Mode mode)
{
    m_mode = mode;
    Q_EMIT changed();
}

void HistoricoFilterForm::setYearRow(int row)
{
    m_selectedYear = row > 0 ? std::optional(m_viewModel->availableYears().at(size_t(row - 1))) : std::nullopt;
    Q_EMIT changed();
}

void HistoricoFilterForm::setMonthRow(int row)
{
    m_selectedMonth = row > 0 ? std::optional(row) : std::nullopt;
    Q_EMIT changed();
}

void HistoricoFilterForm::setRangeStart(const QDateTime &start)
{
    m_rangeStart = instantOf(start);
    Q_EMIT changed();
}

void HistoricoFilterForm::setRangeEnd(const QDateTime &end)
{
    m_rangeEnd = instantOf(end);
    Q_EMIT changed();
}

void HistoricoFilterForm::apply() const
{
    post(resolveFilter());
}

void HistoricoFilterForm::clear() const
{
    post(HistoricoViewModel::None{});
}

void HistoricoFilterForm::syncFromViewModel()
{
    const HistoricoViewModel::DateFilterMode &filter = m_viewModel->filterMode();
    if (const auto *period = std::get_if<HistoricoViewModel::YearMonth>(&filter)) {
        m_mode = Mode::YearMonth;
        m_selectedYear = period->year;
        m_selectedMonth = period->month;
    } else if (const auto *range = std::get_if<HistoricoViewModel::CustomRange>(&filter)) {
        m_mode = Mode::CustomRange;
        m_rangeStart = range->start;
        m_rangeEnd = range->end;
    } else {
        m_mode = Mode::None;
    }
}

void HistoricoFilterForm::listYears()
{
    QList<PickerChoice> choices{{localized("filter.allyears", QStringLiteral("Todos"))}};
    for (const int year : m_viewModel->availableYears())
        choices.append({QString::number(year)});
    m_years.setChoices(choices);
    Q_EMIT changed();
}

HistoricoViewModel::DateFilterMode HistoricoFilterForm::resolveFilter() const
{
    switch (m_mode) {
    case Mode::YearMonth:
        if (!m_selectedYear)
            break;
        return HistoricoViewModel::YearMonth{*m_selectedYear, m_selectedMonth};
    case Mode::CustomRange:
        return HistoricoViewModel::CustomRange{m_rangeStart, m_rangeEnd};
    case Mode::None:
        break;
    }
    return HistoricoViewModel::None{};
}

void HistoricoFilterForm::post(const HistoricoViewModel::DateFilterMode &filter) const
{
    const auto applyAndDismiss = [filter, viewModel = m_viewModel, form = QPointer(this)] {
        viewModel->applyFilter(filter);
        if (form)
            Q_EMIT form->dismissed();
    };
    // The sheet may be gone by then; what its user asked for is done all the same.
    QMetaObject::invokeMethod(m_viewModel, applyAndDismiss, Qt::QueuedConnection);
}

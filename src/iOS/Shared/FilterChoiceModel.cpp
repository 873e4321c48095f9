// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/FilterChoiceModel.h"

#include "Core/ViewModels/DateFilter.h"
#include "Core/ViewModels/MagnitudeFilter.h"

namespace {
template<class Filter>
QStringList labelsOfAllCases()
{
    QStringList labels;
    for (const Filter filter : Filter::allCases)
        labels.append(filter.localizedLabel());
    return labels;
}
}

FilterChoiceModel::FilterChoiceModel(const QStringList &labels, QObject *parent)
    : QAbstractListModel(parent)
    , m_labels(labels)
{
}

int FilterChoiceModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_labels.size());
}

QVariant FilterChoiceModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != labelRole)
        return {};
    return m_labels.at(index.row());
}

QHash<int, QByteArray> FilterChoiceModel::roleNames() const
{
    return {{labelRole, "label"}};
}

MagnitudeFilterModel::MagnitudeFilterModel(QObject *parent)
    : FilterChoiceModel(labelsOfAllCases<MagnitudeFilter>(), parent)
{
}

DateFilterModel::DateFilterModel(QObject *parent)
    : FilterChoiceModel(labelsOfAllCases<DateFilter>(), parent)
{
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Stats/MagnitudeStatModel.h"

void MagnitudeStatModel::setStats(const std::vector<MagnitudeStat> &stats)
{
    if (stats.size() == m_stats.size()) {
        m_stats = stats;
        if (!m_stats.empty())
            Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CountRole, FractionRole});
    } else if (stats.empty()) {
        beginRemoveRows({}, 0, rowCount() - 1);
        m_stats.clear();
        endRemoveRows();
    } else {
        beginInsertRows({}, 0, int(stats.size()) - 1);
        m_stats = stats;
        endInsertRows();
    }
}

int MagnitudeStatModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_stats.size());
}

QVariant MagnitudeStatModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const MagnitudeStat &stat = m_stats[size_t(index.row())];
    switch (role) {
    case CategoryRole:
        return QVariant::fromValue(stat.category);
    case CountRole:
        return stat.count;
    case FractionRole:
        return stat.fraction;
    default:
        return {};
    }
}

QHash<int, QByteArray> MagnitudeStatModel::roleNames() const
{
    return {{CategoryRole, "category"}, {CountRole, "count"}, {FractionRole, "fraction"}};
}

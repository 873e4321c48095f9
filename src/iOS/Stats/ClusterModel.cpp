// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Stats/ClusterModel.h"

#include "Platform/Text/NumberFormat.h"

#include <algorithm>
#include <cmath>

namespace {
/// The letters are fixed: the region's events lie north of the equator and west of Greenwich.
QString coordinates(const ClusterStat &cluster)
{
    return fixedText(cluster.latKey, 1) + QStringLiteral("° N  ") + fixedText(std::abs(cluster.lonKey), 1)
        + QStringLiteral("° O");
}

bool hasId(const std::vector<ClusterStat> &clusters, const QString &id)
{
    return std::any_of(clusters.begin(), clusters.end(),
                       [&id](const ClusterStat &cluster) { return cluster.id == id; });
}
}

void ClusterModel::setClusters(const std::vector<ClusterStat> &clusters)
{
    removeAllBut(clusters);
    for (int row = 0; row < int(clusters.size()); ++row) {
        const ClusterStat &cluster = clusters[size_t(row)];
        const int before = rowOf(cluster.id);
        if (before < 0) {
            beginInsertRows({}, row, row);
            m_clusters.insert(m_clusters.begin() + row, cluster);
            endInsertRows();
        } else if (before != row) {
            beginMoveRows({}, before, before, {}, row);
            std::rotate(m_clusters.begin() + row, m_clusters.begin() + before, m_clusters.begin() + before + 1);
            endMoveRows();
        }
    }
    m_clusters = clusters;
    if (!m_clusters.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

int ClusterModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_clusters.size());
}

QVariant ClusterModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const ClusterStat &cluster = m_clusters[size_t(index.row())];
    switch (role) {
    case RankRole:
        return index.row() + 1;
    case DisplayNameRole:
        return cluster.displayName;
    case CoordinatesRole:
        return coordinates(cluster);
    case CountRole:
        return cluster.count;
    case AverageRole:
        return QStringLiteral("Ø ") + fixedText(cluster.averageMagnitude, 1);
    default:
        return {};
    }
}

QHash<int, QByteArray> ClusterModel::roleNames() const
{
    return {{RankRole, "rank"},
            {DisplayNameRole, "displayName"},
            {CoordinatesRole, "coordinates"},
            {CountRole, "count"},
            {AverageRole, "average"}};
}

int ClusterModel::rowOf(const QString &id) const
{
    const auto found = std::find_if(m_clusters.begin(), m_clusters.end(),
                                    [&id](const ClusterStat &cluster) { return cluster.id == id; });
    return found == m_clusters.end() ? -1 : int(found - m_clusters.begin());
}

void ClusterModel::removeAllBut(const std::vector<ClusterStat> &clusters)
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (hasId(clusters, m_clusters[size_t(row)].id))
            continue;
        beginRemoveRows({}, row, row);
        m_clusters.erase(m_clusters.begin() + row);
        endRemoveRows();
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/ViewModels/StatsViewModel.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

#include <vector>

/// The most active zones, each row known by its zone's id: a zone that climbs moves its row.
class ClusterModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        RankRole = Qt::UserRole, ///< rank: from 1
        DisplayNameRole, ///< displayName: text from outside
        CoordinatesRole, ///< coordinates: of the zone's cell, to one decimal place
        CountRole, ///< count: events
        AverageRole, ///< average: mean magnitude, to one decimal place
    };

    using QAbstractListModel::QAbstractListModel;

    void setClusters(const std::vector<ClusterStat> &clusters);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    int rowOf(const QString &id) const;
    void removeAllBut(const std::vector<ClusterStat> &clusters);

    std::vector<ClusterStat> m_clusters;
};

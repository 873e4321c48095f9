// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Core/ViewModels/StatsViewModel.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

#include <vector>

/// The bars of the distribution. Its rows are the categories, so that new figures change rows and replace none.
class MagnitudeStatModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role {
        CategoryRole = Qt::UserRole, ///< category: MagnitudeCategory
        CountRole, ///< count: events
        FractionRole, ///< fraction: of the fullest category
    };

    using QAbstractListModel::QAbstractListModel;

    void setStats(const std::vector<MagnitudeStat> &stats);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    std::vector<MagnitudeStat> m_stats;
};

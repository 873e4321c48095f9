// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QAbstractListModel>
#include <QtQmlIntegration>

/// The rows of the sidebar: every SidebarItem in its order.
class SidebarModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT

public:
    enum Role { idRole = Qt::UserRole, labelRole, iconRole };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Place of an item by its id; -1 for an unknown or empty one.
    Q_INVOKABLE int rowOf(const QString &id) const;
    Q_INVOKABLE QString idAt(int row) const;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QAbstractListModel>
#include <QStringList>
#include <QtQmlIntegration>

/// The labels of one half of the filter popover, in the order of the choices: row n is choice n.
class FilterChoiceModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS

public:
    enum Role { labelRole = Qt::UserRole };

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

protected:
    FilterChoiceModel(const QStringList &labels, QObject *parent);

private:
    QStringList m_labels;
};

/// The choices of MagnitudeFilter.
class MagnitudeFilterModel : public FilterChoiceModel
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit MagnitudeFilterModel(QObject *parent = nullptr);
};

/// The choices of DateFilter.
class DateFilterModel : public FilterChoiceModel
{
    Q_OBJECT
    QML_ELEMENT

public:
    explicit DateFilterModel(QObject *parent = nullptr);
};

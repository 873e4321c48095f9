// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/MapController.h"

#include <QAbstractListModel>
#include <QPointer>

/// The figures of the graticule: where its lines meet the left and the lower edge of the window.
class MapGraticule : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(MapController *controller READ controller WRITE setController NOTIFY controllerChanged REQUIRED)

public:
    enum Role {
        textRole = Qt::UserRole, ///< such as "16°O"
        offsetRole, ///< pixels along the edge
        isMeridianRole ///< on the lower edge; else on the left one
    };

    using QAbstractListModel::QAbstractListModel;

    MapController *controller() const { return m_controller; }
    void setController(MapController *controller);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void controllerChanged();

private:
    struct Figure
    {
        double degrees;
        double offset;
        bool isMeridian;
    };
    void update();
    std::vector<Figure> figures(double step) const;
    QString text(const Figure &figure) const;

    QPointer<MapController> m_controller;
    std::vector<Figure> m_figures;
    double m_step = 1;
};

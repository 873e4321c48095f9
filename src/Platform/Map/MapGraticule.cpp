// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapGraticule.h"

#include "Platform/Map/BaseMapStyle.h"
#include "Platform/Support/Follow.h"
#include "Platform/Text/Localization.h"
#include "Platform/Text/NumberFormat.h"

#include <cmath>

void MapGraticule::setController(MapController *controller)
{
    if (!follow(m_controller, controller, this, &MapController::cameraChanged, &MapGraticule::update))
        return;
    update();
    Q_EMIT controllerChanged();
}

int MapGraticule::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_figures.size());
}

QVariant MapGraticule::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Figure &figure = m_figures[size_t(index.row())];
    switch (role) {
    case textRole:
        return text(figure);
    case offsetRole:
        return figure.offset;
    case isMeridianRole:
        return figure.isMeridian;
    default:
        return {};
    }
}

QHash<int, QByteArray> MapGraticule::roleNames() const
{
    return {{textRole, "figure"}, {offsetRole, "offset"}, {isMeridianRole, "isMeridian"}};
}

void MapGraticule::update()
{
    if (!m_controller)
        return;
    m_step = graticuleStep(m_controller->camera().visibleWorld().width());
    const std::vector<Figure> now = figures(m_step);
    const int before = rowCount();
    const int after = int(now.size());
    if (after > before)
        beginInsertRows({}, before, after - 1);
    if (after < before)
        beginRemoveRows({}, after, before - 1);
    m_figures = now;
    if (after > before)
        endInsertRows();
    if (after < before)
        endRemoveRows();
    if (after > 0)
        Q_EMIT dataChanged(index(0), index(after - 1));
}

std::vector<MapGraticule::Figure> MapGraticule::figures(double step) const
{
    const MapCamera &camera = m_controller->camera();
    const QRectF world = camera.visibleWorld();
    std::vector<Figure> result;
    for (const double longitude : graticuleMeridians(world, step))
        result.push_back({longitude, camera.toScreen({longitude, 0}).x(), true});
    for (const double latitude : graticuleParallels(world, step))
        result.push_back({latitude, camera.toScreen(WebMercator::toWorld(Coordinate{latitude, 0})).y(), false});
    return result;
}

QString MapGraticule::text(const Figure &figure) const
{
    const int decimals = m_step >= 1        ? 0
        : m_step >= 0.1 && m_step != 0.25   ? 1
        : m_step >= 0.01 && m_step != 0.025 ? 2
                                            : 3;
    const QString separator = localized("map.decimalSeparator", QStringLiteral(","));
    const QString degrees = fixedText(std::abs(figure.degrees), decimals).replace(u'.', separator) + u'°';
    if (figure.isMeridian)
        return degrees
            + (figure.degrees < 0 ? localized("map.west", QStringLiteral("O"))
                                  : localized("map.east", QStringLiteral("E")));
    return degrees
        + (figure.degrees < 0 ? localized("map.south", QStringLiteral("S"))
                              : localized("map.north", QStringLiteral("N")));
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/BaseMapData.h"
#include "Platform/Map/MapGeometry.h"

#include <QPainterPath>

/// The sheet that is being painted on: a piece of the world at a scale. Sheet points are in logical pixels.
struct MapSheet
{
    /// World point of the upper left corner.
    QPointF origin;
    /// Pixels for a degree of longitude.
    double scale = 1;
    QSizeF size;

    QRectF rect() const { return {QPointF(), size}; }
    /// What must be drawn so that strokes and glows that reach in are whole.
    QRectF frame() const { return rect().adjusted(-40, -40, 40, 40); }
    QPointF toSheet(const QPointF &world) const { return (world - origin) * scale; }
    QRectF toSheet(const QRectF &world) const { return {toSheet(world.topLeft()), world.size() * scale}; }
    QRectF world() const { return {origin, size / scale}; }

    QList<QPointF> toSheet(const QList<QPointF> &world) const
    {
        QList<QPointF> result;
        result.reserve(world.size());
        for (const QPointF &point : world)
            result.append(toSheet(point));
        return result;
    }
};

/// An area on the sheet.
struct SheetArea
{
    const MapArea *area = nullptr;
    QPainterPath fill;
    /// Its outline inside the frame.
    std::vector<QList<QPointF>> outline;
    /// The same for broad strokes, with fewer points.
    std::vector<QList<QPointF>> coarseOutline;
};

/// The areas that can be seen on the sheet.
std::vector<SheetArea> visibleAreas(const std::vector<MapArea> &areas, const MapSheet &sheet);

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/CoordinateRegion.h"

#include <QPointF>
#include <QRectF>

/// The spherical Mercator projection of web maps. World points are in degrees of longitude at the equator: x grows to
/// the east from -180 to 180, y grows to the south as on a screen and is 0 at the equator.
namespace WebMercator {
/// Latitudes beyond this, north or south, are drawn on it: there the world is a square.
inline constexpr double maximumLatitude = 85.0511287798066;

QPointF toWorld(const Coordinate &coordinate);
Coordinate toCoordinate(const QPointF &world);
/// The world rectangle of a region; edges beyond the poles are cut off.
QRectF toWorld(const CoordinateRegion &region);
}

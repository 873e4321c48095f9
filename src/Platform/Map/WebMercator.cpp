// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/WebMercator.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {
constexpr double degreesPerRadian = 180.0 / std::numbers::pi;
}

QPointF WebMercator::toWorld(const Coordinate &coordinate)
{
    const double latitude = std::clamp(coordinate.latitude, -maximumLatitude, maximumLatitude);
    return {coordinate.longitude, -degreesPerRadian * std::asinh(std::tan(latitude / degreesPerRadian))};
}

Coordinate WebMercator::toCoordinate(const QPointF &world)
{
    return {-degreesPerRadian * std::atan(std::sinh(world.y() / degreesPerRadian)), world.x()};
}

QRectF WebMercator::toWorld(const CoordinateRegion &region)
{
    const double halfHeight = region.span.latitudeDelta / 2;
    const double halfWidth = region.span.longitudeDelta / 2;
    return {toWorld(Coordinate{region.center.latitude + halfHeight, region.center.longitude - halfWidth}),
            toWorld(Coordinate{region.center.latitude - halfHeight, region.center.longitude + halfWidth})};
}

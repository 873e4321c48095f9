// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapCamera.h"

#include <algorithm>
#include <cmath>

namespace {
/// Seconds in which a thrown picture loses all but 1/e of its speed.
constexpr double slowingTime = 0.25;
/// Below this speed, in pixels a second, letting go is not a throw.
constexpr double slowestThrow = 60;

/// `center` moved so that a window of `length` around it stays between `low` and `high`, or stands in their middle.
double keptInside(double center, double length, double low, double high)
{
    return length >= high - low ? (low + high) / 2 : std::clamp(center, low + length / 2, high - length / 2);
}
}

QPointF MapCamera::toScreen(const QPointF &world) const
{
    return (world - m_center) * m_scale + QPointF(m_size.width() / 2, m_size.height() / 2);
}

QPointF MapCamera::toWorld(const QPointF &screen) const
{
    return m_center + (screen - QPointF(m_size.width() / 2, m_size.height() / 2)) / m_scale;
}

QRectF MapCamera::visibleWorld() const
{
    const QSizeF visible = m_size / m_scale;
    return {m_center - QPointF(visible.width() / 2, visible.height() / 2), visible};
}

CoordinateRegion MapCamera::region() const
{
    const QRectF visible = visibleWorld();
    const Coordinate northWest = WebMercator::toCoordinate(visible.topLeft());
    const Coordinate southEast = WebMercator::toCoordinate(visible.bottomRight());
    return {WebMercator::toCoordinate(m_center),
            {northWest.latitude - southEast.latitude, southEast.longitude - northWest.longitude}};
}

double MapCamera::smallestScale() const
{
    const QRectF bounds = WebMercator::toWorld(m_limits.bounds);
    return std::max(
        {m_size.width() / m_limits.widestDegrees, m_size.width() / bounds.width(), m_size.height() / bounds.height()});
}

double MapCamera::largestScale() const
{
    return std::max(smallestScale(), m_size.width() / m_limits.narrowestDegrees);
}

void MapCamera::resize(const QSizeF &size)
{
    m_size = size.expandedTo({1, 1});
    keepWithinLimits();
}

void MapCamera::fit(const CoordinateRegion &region, const QMarginsF &covered)
{
    const QRectF wanted = WebMercator::toWorld(region);
    const QRectF free = QRectF(QPointF(), m_size).marginsRemoved(covered);
    m_scale = std::min(std::max(free.width(), 1.0) / wanted.width(), std::max(free.height(), 1.0) / wanted.height());
    m_scale = std::clamp(m_scale, smallestScale(), largestScale());
    const QPointF offset = free.center() - QRectF(QPointF(), m_size).center();
    m_center = wanted.center() - offset / m_scale;
    keepWithinLimits();
}

void MapCamera::pan(const QPointF &pixels)
{
    m_center -= pixels / m_scale;
    keepWithinLimits();
}

void MapCamera::zoom(double factor, const QPointF &anchor)
{
    if (!(factor > 0))
        return;
    const QPointF held = toWorld(anchor);
    m_scale = std::clamp(m_scale * factor, smallestScale(), largestScale());
    m_center += held - toWorld(anchor);
    keepWithinLimits();
}

void MapCamera::keepWithinLimits()
{
    m_scale = std::clamp(m_scale, smallestScale(), largestScale());
    const QRectF bounds = WebMercator::toWorld(m_limits.bounds);
    m_center = {keptInside(m_center.x(), m_size.width() / m_scale, bounds.left(), bounds.right()),
                keptInside(m_center.y(), m_size.height() / m_scale, bounds.top(), bounds.bottom())};
}

MapThrow::MapThrow(const QPointF &velocity)
    : m_velocity(std::hypot(velocity.x(), velocity.y()) < slowestThrow ? QPointF() : velocity)
{
}

QPointF MapThrow::travelled(double seconds) const
{
    return m_velocity * slowingTime * (1 - std::exp(-seconds / slowingTime));
}

double MapThrow::duration() const
{
    const double way = std::hypot(m_velocity.x(), m_velocity.y()) * slowingTime;
    return way > 0.5 ? slowingTime * std::log(way / 0.5) : 0;
}

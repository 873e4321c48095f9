// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include "Platform/Map/WebMercator.h"

#include <QMarginsF>
#include <QSizeF>

/// How far a camera may go.
struct MapLimits
{
    /// The part of the world that there is a map of.
    CoordinateRegion bounds;
    /// Degrees of longitude across the window.
    double widestDegrees = 40;
    double narrowestDegrees = 0.02;
};

/// What a window shows of the world: a centre and a scale, north up. A plain value; screen points are in pixels from
/// the window's upper left corner, world points as WebMercator has them. All changes keep within the limits.
class MapCamera
{
public:
    MapCamera() = default;
    explicit MapCamera(const MapLimits &limits)
        : m_limits(limits)
    {
    }

    QSizeF size() const { return m_size; }
    /// World point in the middle of the window.
    QPointF center() const { return m_center; }
    /// Pixels for a degree of longitude.
    double scale() const { return m_scale; }

    QPointF toScreen(const QPointF &world) const;
    QPointF toWorld(const QPointF &screen) const;
    QRectF visibleWorld() const;
    /// Centre and size of what the window shows, in degrees.
    CoordinateRegion region() const;
    /// The scales that the limits allow for this window. A window too tall or too wide for the bounds cannot go as
    /// far out as `widestDegrees`.
    double smallestScale() const;
    double largestScale() const;

    /// The window changes its size: centre and scale stay.
    void resize(const QSizeF &size);
    /// Shows the region as a whole, as large as it goes, in the middle of what `covered` leaves free of the window.
    void fit(const CoordinateRegion &region, const QMarginsF &covered = {});
    /// Moves the picture by pixels, as a hand would.
    void pan(const QPointF &pixels);
    /// Magnifies by `factor`; the place under `anchor` stays where it is unless a bound forbids it.
    void zoom(double factor, const QPointF &anchor);

    bool operator==(const MapCamera &other) const
    {
        return m_size == other.m_size && m_center == other.m_center && m_scale == other.m_scale;
    }

private:
    void keepWithinLimits();

    MapLimits m_limits{{{0, 0}, {170, 360}}, 360, 0.02};
    QSizeF m_size{1, 1};
    QPointF m_center;
    double m_scale = 1;
};

/// The run-out of a picture that was let go while moving: it slows down evenly and comes to rest.
class MapThrow
{
public:
    /// `velocity` in pixels a second at the moment of letting go.
    explicit MapThrow(const QPointF &velocity = {});

    /// Pixels travelled after so many seconds.
    QPointF travelled(double seconds) const;
    /// Seconds until the rest of the way is less than half a pixel; 0 for a picture that was hardly moving.
    double duration() const;

private:
    QPointF m_velocity;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QList>
#include <QPointF>
#include <QRectF>

#include <vector>

/// Cutting lines and areas to what can be seen. Close by, an island measures tens of thousands of pixels, more than a
/// raster painter can count; from afar, most of its points fall on one another.
namespace MapGeometry {
/// The part of a closed ring inside `frame`. Where the ring leaves, the result runs along the frame's edge, so it is
/// good for filling, not for stroking.
QList<QPointF> clippedRing(const QList<QPointF> &ring, const QRectF &frame);

/// The pieces of a line inside `frame`, each end cut exactly at its edge: for stroking.
std::vector<QList<QPointF>> clippedLine(const QList<QPointF> &line, const QRectF &frame);

/// The line without the points that are nearer than `distance` to the last one kept. First and last stay.
QList<QPointF> thinned(const QList<QPointF> &line, double distance);
}

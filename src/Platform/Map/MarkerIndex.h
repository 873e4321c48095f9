// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QPointF>

#include <optional>
#include <vector>

/// Where the marks of a map lie: which of them lies under a finger, which comes next in a direction. Marks are numbered
/// by importance, 0 first; a lower number lies above a higher one.
class MarkerIndex
{
public:
    enum class Direction { left, right, up, down };

    /// World points, by importance. Points that are not finite numbers are in no answer.
    explicit MarkerIndex(std::vector<QPointF> positions = {});

    const std::vector<QPointF> &positions() const { return m_positions; }

    /// The most important mark within `radius` degrees of longitude around a world point.
    std::optional<qsizetype> topmostAt(const QPointF &world, double radius) const;
    /// The nearest mark within 45 degrees to either side of a direction. Marks at the very same place come first: less
    /// important ones to the right and below, more important ones to the left and above.
    std::optional<qsizetype> nearest(qsizetype from, Direction direction) const;
    /// The mark nearest to a point; absent only where there is none.
    std::optional<qsizetype> nearestTo(const QPointF &world) const;

private:
    /// A mark and the number of its cell, rows of cells one after the other.
    struct Entry
    {
        quint64 cell;
        qsizetype mark;
    };

    void sortIntoCells();
    template<class Visit>
    void visit(const QPointF &world, double radius, Visit visit) const;
    template<class Accept>
    std::optional<qsizetype> nearestAccepted(const QPointF &world, Accept accept) const;

    std::vector<QPointF> m_positions;
    std::vector<Entry> m_entries;
};

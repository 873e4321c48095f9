// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QPointF>

#include <optional>
#include <vector>

/// Where the marks of a map lie: which of them can be seen at a scale, which lies under a finger, which comes next in a
/// direction. Marks are numbered by importance, 0 first; a lower number lies above a higher one.
class MarkerIndex
{
public:
    enum class Direction { left, right, up, down };

    /// World points, by importance. Points that are not finite numbers are in no answer.
    explicit MarkerIndex(std::vector<QPointF> positions = {});

    const std::vector<QPointF> &positions() const { return m_positions; }

    /// The level of a scale: a cell of the thinning raster then measures 8 to 16 pixels. Grows by one as the scale
    /// doubles.
    static int levelOf(double scale);
    /// The level of the closest look. A mark whose level is beyond shows at no scale.
    static constexpr int deepestShown = 24;
    /// For each mark the level from which it shows: from there on no more important one shares its cell.
    const std::vector<int> &levels() const { return m_levels; }

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

    void thin();
    void sortIntoCells();
    template<class Visit>
    void visit(const QPointF &world, double radius, Visit visit) const;
    template<class Accept>
    std::optional<qsizetype> nearestAccepted(const QPointF &world, Accept accept) const;

    std::vector<QPointF> m_positions;
    std::vector<int> m_levels;
    std::vector<Entry> m_entries;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MarkerIndex.h"

#include <algorithm>
#include <cmath>

namespace {
/// The world of 360 degrees lies in a square of 512.
constexpr double square = 512;
/// Cells of the search grid for a degree.
constexpr double cellsPerDegree = 32;
constexpr quint64 cellsInRow = quint64(square * cellsPerDegree);

bool isFinite(const QPointF &point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

quint32 quantized(double degrees, double cells)
{
    return quint32(std::clamp((degrees + square / 2) / square * cells, 0.0, cells - 1));
}

bool pointsTo(const QPointF &way, MarkerIndex::Direction direction)
{
    switch (direction) {
    case MarkerIndex::Direction::left:
        return way.x() < 0 && std::abs(way.y()) <= -way.x();
    case MarkerIndex::Direction::right:
        return way.x() > 0 && std::abs(way.y()) <= way.x();
    case MarkerIndex::Direction::up:
        return way.y() < 0 && std::abs(way.x()) <= -way.y();
    case MarkerIndex::Direction::down:
        return way.y() > 0 && std::abs(way.x()) <= way.y();
    }
    Q_UNREACHABLE();
}
}

MarkerIndex::MarkerIndex(std::vector<QPointF> positions)
    : m_positions(std::move(positions))
{
    sortIntoCells();
}

void MarkerIndex::sortIntoCells()
{
    m_entries.reserve(m_positions.size());
    for (size_t mark = 0; mark < m_positions.size(); ++mark) {
        if (!isFinite(m_positions[mark]))
            continue;
        const quint64 column = quantized(m_positions[mark].x(), double(cellsInRow));
        const quint64 row = quantized(m_positions[mark].y(), double(cellsInRow));
        m_entries.push_back({row * cellsInRow + column, qsizetype(mark)});
    }
    std::sort(m_entries.begin(), m_entries.end(),
              [](const Entry &a, const Entry &b) { return std::pair(a.cell, a.mark) < std::pair(b.cell, b.mark); });
}

template<class Visit>
void MarkerIndex::visit(const QPointF &world, double radius, Visit visit) const
{
    const quint64 left = quantized(world.x() - radius, double(cellsInRow));
    const quint64 right = quantized(world.x() + radius, double(cellsInRow));
    const quint64 top = quantized(world.y() - radius, double(cellsInRow));
    const quint64 bottom = quantized(world.y() + radius, double(cellsInRow));
    const auto isBefore = [](const Entry &entry, quint64 cell) { return entry.cell < cell; };
    auto entry = m_entries.begin();
    for (quint64 row = top; row <= bottom && entry != m_entries.end(); ++row) {
        entry = std::lower_bound(entry, m_entries.end(), row * cellsInRow + left, isBefore);
        for (; entry != m_entries.end() && entry->cell <= row * cellsInRow + right; ++entry)
            visit(entry->mark);
        // Rows without marks are skipped at once: the world is mostly empty.
        if (entry != m_entries.end())
            row = std::max(row, entry->cell / cellsInRow - (entry->cell / cellsInRow > row ? 1 : 0));
    }
}

std::optional<qsizetype> MarkerIndex::topmostAt(const QPointF &world, double radius) const
{
    std::optional<qsizetype> found;
    visit(world, radius, [&](qsizetype mark) {
        const QPointF way = m_positions[size_t(mark)] - world;
        if ((!found || mark < *found) && QPointF::dotProduct(way, way) <= radius * radius)
            found = mark;
    });
    return found;
}

template<class Accept>
std::optional<qsizetype> MarkerIndex::nearestAccepted(const QPointF &world, Accept accept) const
{
    double radius = 1 / cellsPerDegree;
    while (radius <= 2 * square) {
        std::optional<qsizetype> found;
        double shortest = radius * radius;
        visit(world, radius, [&](qsizetype mark) {
            const QPointF way = m_positions[size_t(mark)] - world;
            const double distance = QPointF::dotProduct(way, way);
            const bool isBetter = distance < shortest || (distance == shortest && found && mark < *found);
            if (isBetter && accept(mark, way)) {
                found = mark;
                shortest = distance;
            }
        });
        if (found)
            return found;
        radius *= 2;
    }
    return std::nullopt;
}

std::optional<qsizetype> MarkerIndex::nearest(qsizetype from, Direction direction) const
{
    const QPointF start = m_positions[size_t(from)];
    const bool isForward = direction == Direction::right || direction == Direction::down;
    // The next of a pile is the one of the nearest number, and a pile must not be left before it is walked through.
    std::optional<qsizetype> inPile;
    visit(start, 0, [&](qsizetype mark) {
        if (m_positions[size_t(mark)] != start || mark == from || (mark > from) != isForward)
            return;
        if (!inPile || std::abs(mark - from) < std::abs(*inPile - from))
            inPile = mark;
    });
    if (inPile)
        return inPile;
    const auto next = nearestAccepted(start, [&](qsizetype, const QPointF &way) { return pointsTo(way, direction); });
    if (!next || isForward)
        return next;
    // Going back, a pile is entered at the end at which going forward would leave it.
    qsizetype last = *next;
    visit(m_positions[size_t(*next)], 0, [&](qsizetype mark) {
        if (m_positions[size_t(mark)] == m_positions[size_t(*next)])
            last = std::max(last, mark);
    });
    return last;
}

std::optional<qsizetype> MarkerIndex::nearestTo(const QPointF &world) const
{
    return nearestAccepted(world, [](qsizetype, const QPointF &) { return true; });
}

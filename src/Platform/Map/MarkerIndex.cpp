// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MarkerIndex.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numeric>

namespace {
/// The world of 360 degrees lies in a square of 512, which is halved so many times.
constexpr double square = 512;
constexpr int deepestLevel = MarkerIndex::deepestShown;
constexpr int hiddenLevel = deepestLevel + 1;
constexpr double widestCellPixels = 16;
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

/// The bits of a number with a gap behind each.
quint64 spread(quint64 bits)
{
    bits = (bits | bits << 16) & 0x0000FFFF0000FFFFULL;
    bits = (bits | bits << 8) & 0x00FF00FF00FF00FFULL;
    bits = (bits | bits << 4) & 0x0F0F0F0F0F0F0F0FULL;
    bits = (bits | bits << 2) & 0x3333333333333333ULL;
    return (bits | bits << 1) & 0x5555555555555555ULL;
}

/// A number for a point whose first 2n bits name its cell at level n.
quint64 pathOf(const QPointF &world)
{
    constexpr double cells = double(1U << deepestLevel);
    return spread(quantized(world.x(), cells)) << 1 | spread(quantized(world.y(), cells));
}

/// The deepest level at which two paths are in one cell.
int commonLevel(quint64 a, quint64 b)
{
    return (std::countl_zero(a ^ b) - (64 - 2 * deepestLevel)) / 2;
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
    , m_levels(m_positions.size(), hiddenLevel)
{
    thin();
    sortIntoCells();
}

int MarkerIndex::levelOf(double scale)
{
    return std::clamp(int(std::ceil(std::log2(scale * square / widestCellPixels))), 0, deepestLevel);
}

/// Marks are taken out of their order by place, the least important first. Of those left, all are more important, and
/// the one that shares the most levels is a neighbour.
void MarkerIndex::thin()
{
    struct Place
    {
        quint64 path;
        qsizetype mark;
    };
    std::vector<Place> order;
    order.reserve(m_positions.size());
    for (size_t mark = 0; mark < m_positions.size(); ++mark)
        if (isFinite(m_positions[mark]))
            order.push_back({pathOf(m_positions[mark]), qsizetype(mark)});
    std::sort(order.begin(), order.end(),
              [](const Place &a, const Place &b) { return std::pair(a.path, a.mark) < std::pair(b.path, b.mark); });

    const size_t count = order.size();
    constexpr size_t none = std::numeric_limits<size_t>::max();
    std::vector<size_t> previous(count);
    std::vector<size_t> next(count);
    std::vector<size_t> placeOf(m_positions.size(), none);
    for (size_t i = 0; i < count; ++i) {
        previous[i] = i == 0 ? none : i - 1;
        next[i] = i + 1 == count ? none : i + 1;
        placeOf[size_t(order[i].mark)] = i;
    }
    for (size_t mark = m_positions.size(); mark-- > 0;) {
        const size_t place = placeOf[mark];
        if (place == none)
            continue;
        int shared = -1;
        for (const size_t neighbour : {previous[place], next[place]})
            if (neighbour != none)
                shared = std::max(shared, commonLevel(order[place].path, order[neighbour].path));
        m_levels[mark] = shared + 1;
        if (previous[place] != none)
            next[previous[place]] = next[place];
        if (next[place] != none)
            previous[next[place]] = previous[place];
    }
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
    for (double radius = 1 / cellsPerDegree; radius <= 2 * square; radius *= 2) {
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

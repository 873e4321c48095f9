// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MarkerThinning.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace {
/// Pixels for a degree at level 0; no window looks from farther away.
constexpr double smallestScale = 4;
/// World points lie within so many degrees of the origin, or are taken to.
constexpr double farthest = 256;
/// Dots across a disc. A tile is as large and has a bit for each of its dots.
constexpr quint32 dots = 8;
constexpr size_t dotsOfATile = size_t{dots} * dots;

/// Dots of a disc in the tile of its upper left dot and in those to the right, below, and right below.
using Stamp = std::array<quint64, 4>;

/// A stamp for each place within a tile that the disc's upper left dot may have.
std::array<Stamp, dotsOfATile> makeStamps()
{
    std::array<Stamp, dotsOfATile> stamps{};
    for (quint32 place = 0; place < dotsOfATile; ++place) {
        for (quint32 dot = 0; dot < dotsOfATile; ++dot) {
            const quint32 dotColumn = dot % dots;
            const quint32 dotRow = dot / dots;
            const double x = dotColumn + 0.5 - dots / 2.0;
            const double y = dotRow + 0.5 - dots / 2.0;
            if (x * x + y * y > dots * dots / 4.0)
                continue;
            const quint32 column = place % dots + dotColumn;
            const quint32 row = place / dots + dotRow;
            stamps[place][row / dots * 2 + column / dots] |= 1ULL << (row % dots * dots + column % dots);
        }
    }
    return stamps;
}

/// The dots of many tiles, all free at first. A table of open addresses: each mark asks it four times at every level.
class Tiles
{
public:
    void clear()
    {
        m_used = 0;
        std::fill(m_slots.begin(), m_slots.end(), Slot{});
    }

    /// The dots of the square of tiles from here to the right and below. They hold until the next call.
    std::array<quint64 *, 4> square(quint32 column, quint32 row)
    {
        if ((m_used + 4) * 2 > m_slots.size())
            grow();
        return {&slot(column, row).taken, &slot(column + 1, row).taken, &slot(column, row + 1).taken,
                &slot(column + 1, row + 1).taken};
    }

    /// Whether square() has ever given this tile out.
    bool has(quint32 column, quint32 row) const { return m_slots[find(tileAt(column, row))].tile != 0; }

private:
    struct Slot
    {
        /// Column and row; 0 for a slot that is free, which no tile is.
        quint64 tile = 0;
        quint64 taken = 0;
    };

    static quint64 tileAt(quint32 column, quint32 row) { return quint64(column) << 32 | row; }

    /// Where the tile is, or where it would be.
    size_t find(quint64 tile) const
    {
        const size_t mask = m_slots.size() - 1;
        size_t at = size_t((tile * 0x9E3779B97F4A7C15ULL) >> 32) & mask;
        while (m_slots[at].tile != 0 && m_slots[at].tile != tile)
            at = (at + 1) & mask;
        return at;
    }

    Slot &slot(quint32 column, quint32 row)
    {
        const quint64 tile = tileAt(column, row);
        Slot &found = m_slots[find(tile)];
        if (found.tile == 0)
            ++m_used;
        found.tile = tile;
        return found;
    }

    void grow()
    {
        std::vector<Slot> old(m_slots.size() * 4);
        old.swap(m_slots);
        m_used = 0;
        for (const Slot &kept : old)
            if (kept.tile != 0)
                slot(quint32(kept.tile >> 32), quint32(kept.tile)).taken = kept.taken;
    }

    std::vector<Slot> m_slots = std::vector<Slot>(1024);
    size_t m_used = 0;
};

/// Where a disc lies on the raster of a level.
struct Place
{
    Place(const QPointF &world, double dotsPerDegree)
        : column(dotOf(world.x(), dotsPerDegree))
        , row(dotOf(world.y(), dotsPerDegree))
    {
    }

    static quint32 dotOf(double degrees, double dotsPerDegree)
    {
        // Tile 0 is no disc's, nor its neighbour's.
        return 2 * dots + quint32((std::clamp(degrees, -farthest, farthest) + farthest) * dotsPerDegree);
    }

    size_t withinTile() const { return row % dots * dots + column % dots; }

    /// Of its upper left dot.
    quint32 column;
    quint32 row;
};

class Thinning
{
public:
    Thinning(const std::vector<QPointF> &world, double discPixels)
        : m_world(world)
        , m_discPixels(discPixels)
        , m_levels(world.size(), quint8(MarkerThinning::never))
    {
        for (size_t mark = 0; mark < world.size(); ++mark)
            if (std::isfinite(world[mark].x()) && std::isfinite(world[mark].y()))
                m_active.push_back(quint32(mark));
    }

    std::vector<quint8> run()
    {
        for (int level = 0; level <= MarkerThinning::deepestLevel && !m_active.empty(); ++level) {
            m_dotsPerDegree = smallestScale * std::exp2(level / 2.0) * dots / m_discPixels;
            show(quint8(level));
            dropSettled();
        }
        return std::move(m_levels);
    }

private:
    /// Lays down the discs that show, the uppermost first.
    void show(quint8 level)
    {
        static const std::array<Stamp, dotsOfATile> stamps = makeStamps();
        m_tiles.clear();
        m_waiting = 0;
        for (const quint32 mark : m_active) {
            const Place place(m_world[mark], m_dotsPerDegree);
            const Stamp &stamp = stamps[place.withinTile()];
            const std::array<quint64 *, 4> taken = m_tiles.square(place.column / dots, place.row / dots);
            int all = 0;
            int free = 0;
            for (size_t i = 0; i < stamp.size(); ++i) {
                all += std::popcount(stamp[i]);
                free += std::popcount(stamp[i] & ~*taken[i]);
            }
            const bool shows = m_levels[mark] < level || 10 * free >= all;
            if (!shows) {
                ++m_waiting;
                continue;
            }
            m_levels[mark] = std::min(m_levels[mark], level);
            for (size_t i = 0; i < stamp.size(); ++i)
                *taken[i] |= stamp[i];
        }
    }

    /// Forgets the marks that show and lie near none of those that wait: closer by, they lie on none either.
    void dropSettled()
    {
        // While many wait, few would go.
        if (m_waiting * 4 > m_active.size())
            return;
        m_tiles.clear();
        for (const quint32 mark : m_active) {
            if (m_levels[mark] != MarkerThinning::never)
                continue;
            const Place place(m_world[mark], m_dotsPerDegree);
            // The tile of the mark and those around it, from which a disc may reach this one.
            for (const quint32 column : {place.column / dots - 1, place.column / dots})
                for (const quint32 row : {place.row / dots - 1, place.row / dots})
                    m_tiles.square(column, row);
        }
        std::erase_if(m_active, [this](quint32 mark) {
            const Place place(m_world[mark], m_dotsPerDegree);
            return !m_tiles.has(place.column / dots, place.row / dots);
        });
    }

    const std::vector<QPointF> &m_world;
    double m_discPixels;
    std::vector<quint8> m_levels;
    /// Marks that wait to be shown or lie near such, lowest number first.
    std::vector<quint32> m_active;
    size_t m_waiting = 0;
    double m_dotsPerDegree = 0;
    Tiles m_tiles;
};
}

int MarkerThinning::levelOf(double scale)
{
    return std::clamp(int(std::floor(std::log2(scale / smallestScale) * 2)), 0, deepestLevel);
}

std::vector<quint8> MarkerThinning::levels(const std::vector<QPointF> &world, double discPixels)
{
    return Thinning(world, discPixels).run();
}

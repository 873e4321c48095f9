// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MarkerThinning.h"
#include "Support/Table.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr double discPixels = 28;

/// The share of a mark's disc that no disc of a lower number covers of those that show, looked at point by point.
double freeShare(const std::vector<QPointF> &world, const std::vector<quint8> &levels, size_t mark, int level,
                 double scale)
{
    constexpr int points = 28;
    constexpr double radius = discPixels / 2;
    const auto isWithin = [&](const QPointF &pixels) { return QPointF::dotProduct(pixels, pixels) <= radius * radius; };
    std::vector<QPointF> above;
    for (size_t other = 0; other < mark; ++other)
        if (const QPointF way = (world[other] - world[mark]) * scale;
            levels[other] <= level && way.manhattanLength() < 2 * discPixels)
            above.push_back(way);
    int all = 0;
    int free = 0;
    for (int i = 0; i < points * points; ++i) {
        const int column = i % points;
        const int row = i / points;
        const QPointF point((column + 0.5) * discPixels / points - radius, (row + 0.5) * discPixels / points - radius);
        if (!isWithin(point))
            continue;
        ++all;
        free +=
            std::none_of(above.begin(), above.end(), [&](const QPointF &center) { return isWithin(point - center); });
    }
    return double(free) / all;
}
}

class MarkerThinningTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLevelIsHalfADoubling_data()
    {
        const Table<double, int> row;
        row("all of the map, in a small window", 2.0, 0);
        row("archipelago", 128.0, 10);
        row("not yet closer", 181.0, 10);
        row("closer", 181.1, 11);
        row("closest", 1e6, MarkerThinning::deepestLevel);
    }

    void aLevelIsHalfADoubling()
    {
        const auto [scale, expected] = Table<double, int>::current();
        QCOMPARE(MarkerThinning::levelOf(scale), expected);
    }

    /// At 128 pixels for a degree; mark 0 in the middle.
    void aMarkShowsWhileATenthOfItIsFree_data()
    {
        const Table<QList<QPointF>, bool> row;
        row("beside", QList<QPointF>{{30, 0}}, true);
        row("half over it", QList<QPointF>{{12, 0}}, true);
        row("mostly over it", QList<QPointF>{{4, 0}}, true);
        row("all but over it", QList<QPointF>{{1, 0}}, false);
        row("at its place", QList<QPointF>{{0, 0}}, false);
        row("mostly over it from both sides", QList<QPointF>{{-12, 0}, {-6, 0}}, false);
    }

    void aMarkShowsWhileATenthOfItIsFree()
    {
        const auto [others, expected] = Table<QList<QPointF>, bool>::current();
        std::vector<QPointF> world{{-16, -30}};
        for (const QPointF &pixels : others)
            world.push_back(world.front() + pixels / 128);
        const std::vector<quint8> levels = MarkerThinning::levels(world, discPixels);
        QCOMPARE(int(levels.front()), 0);
        QCOMPARE(levels.back() <= MarkerThinning::levelOf(128), expected);
        // Of half the size, they lie on one another as these do at half the scale.
        const std::vector<quint8> small = MarkerThinning::levels(world, discPixels / 2);
        QCOMPARE(small.back() <= MarkerThinning::levelOf(64), expected);
    }

    /// Of a raster of eighths of a disc, one cannot ask for a tenth to the point.
    void whatIsLeftOutIsHiddenAndWhatShowsIsSeen()
    {
        QRandomGenerator random(7);
        std::vector<QPointF> world;
        world.reserve(400);
        for (int i = 0; i < 400; ++i)
            world.push_back(
                {-18 + random.bounded(1.0), -32 + (i % 2 == 0 ? random.bounded(1.0) : random.bounded(0.1))});
        const std::vector<quint8> levels = MarkerThinning::levels(world, discPixels);
        for (int level = 0; level <= MarkerThinning::deepestLevel; ++level) {
            const double scale = 4 * std::exp2(level / 2.0);
            for (size_t mark = 0; mark < world.size(); ++mark) {
                if (levels[mark] < level)
                    continue;
                const double free = freeShare(world, levels, mark, level, scale);
                const QByteArray what = "mark " + QByteArray::number(int(mark)) + " at level "
                    + QByteArray::number(level) + ": " + QByteArray::number(free);
                QVERIFY2(levels[mark] == level ? free > 0.02 : free < 0.25, what);
            }
        }
    }

    void whatHasNoPlaceOfItsOwnNeverShows()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double infinity = std::numeric_limits<double>::infinity();
        const std::vector<quint8> levels =
            MarkerThinning::levels({{nan, 0}, {0, infinity}, {1, 1}, {1, 1}, {1e300, -1e300}}, discPixels);
        QCOMPARE(int(levels[0]), MarkerThinning::never);
        QCOMPARE(int(levels[1]), MarkerThinning::never);
        QCOMPARE(int(levels[2]), 0);
        QCOMPARE(int(levels[3]), MarkerThinning::never);
        QCOMPARE(int(levels[4]), 0);
        QVERIFY(MarkerThinning::levels({}, discPixels).empty());
    }
};

QTEST_GUILESS_MAIN(MarkerThinningTest)
#include "MarkerThinningTest.moc"

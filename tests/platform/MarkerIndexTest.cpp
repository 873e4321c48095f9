// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MarkerIndex.h"
#include "Support/Table.h"

#include <QLineF>
#include <QRandomGenerator>
#include <QTest>

#include <limits>

Q_DECLARE_METATYPE(MarkerIndex::Direction)

namespace {
using Direction = MarkerIndex::Direction;

std::vector<QPointF> randomPositions(int count)
{
    QRandomGenerator random(7);
    std::vector<QPointF> positions;
    positions.reserve(size_t(count));
    for (int i = 0; i < count; ++i)
        positions.push_back({-18 + random.bounded(4.0), -32 + random.bounded(3.0)});
    return positions;
}
}

class MarkerIndexTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void searchesAgreeWithLookingAtAll()
    {
        const std::vector<QPointF> positions = randomPositions(400);
        const MarkerIndex index(positions);
        QRandomGenerator random(11);
        for (int i = 0; i < 200; ++i) {
            const QPointF point(-18 + random.bounded(4.0), -32 + random.bounded(3.0));
            const double radius = random.bounded(0.5);
            qsizetype topmost = -1;
            qsizetype nearest = -1;
            for (size_t mark = positions.size(); mark-- > 0;) {
                const auto distance = [&](qsizetype m) { return QLineF(positions[size_t(m)], point).length(); };
                if (distance(qsizetype(mark)) <= radius)
                    topmost = qsizetype(mark);
                if (nearest < 0 || distance(qsizetype(mark)) <= distance(nearest))
                    nearest = qsizetype(mark);
            }
            QCOMPARE(index.topmostAt(point, radius).value_or(-1), topmost);
            QCOMPARE(index.nearestTo(point).value_or(-1), nearest);
        }
    }

    /// 0 in the middle, 1 and 2 to the right at one place, 3 further right, 4 steeply above.
    void theWalkGoesByNearness_data()
    {
        const Table<int, Direction, int> row;
        row("right, into a pile", 0, Direction::right, 1);
        row("through the pile", 1, Direction::right, 2);
        row("out of the pile", 2, Direction::right, 3);
        row("back into it", 3, Direction::left, 2);
        row("back through it", 2, Direction::left, 1);
        row("and out", 1, Direction::left, 0);
        row("up", 0, Direction::up, 4);
        row("down again", 4, Direction::down, 0);
        row("nothing there", 0, Direction::left, -1);
    }

    void theWalkGoesByNearness()
    {
        const auto [from, direction, expected] = Table<int, Direction, int>::current();
        const MarkerIndex index({{0, 0}, {1, 0.2}, {1, 0.2}, {5, 0}, {0.5, -3}});
        QCOMPARE(int(index.nearest(from, direction).value_or(-1)), expected);
    }

    void whatIsNoPlaceIsInNoAnswer()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const MarkerIndex index({{nan, 0}, {0, std::numeric_limits<double>::infinity()}, {1, 1}});
        QCOMPARE(index.topmostAt({0, 0}, 1000).value_or(-1), qsizetype(2));
        QCOMPARE(index.nearestTo({0, 0}).value_or(-1), qsizetype(2));
        QVERIFY(!MarkerIndex().nearestTo({0, 0}));
    }
};

QTEST_GUILESS_MAIN(MarkerIndexTest)
#include "MarkerIndexTest.moc"

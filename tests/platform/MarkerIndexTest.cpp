// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MarkerIndex.h"
#include "Support/Table.h"

#include <QLineF>
#include <QRandomGenerator>

#include <cmath>

using Direction = MarkerIndex::Direction;
Q_DECLARE_METATYPE(Direction)

class MarkerIndexTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void searchesAgreeWithLookingAtAll()
    {
        QRandomGenerator random(7);
        const auto point = [&] { return QPointF(-18 + random.bounded(4.0), -32 + random.bounded(3.0)); };
        std::vector<QPointF> positions(400);
        std::ranges::generate(positions, point);
        const MarkerIndex index(positions);
        for (int i = 0; i < 200; ++i) {
            const QPointF looked = point();
            const double radius = random.bounded(0.5);
            const auto distance = [&](const QPointF &mark) { return QLineF(mark, looked).length(); };
            const auto topmost =
                std::ranges::find_if(positions, [&](const QPointF &mark) { return distance(mark) <= radius; });
            const auto nearest = std::ranges::min_element(positions, {}, distance);
            QCOMPARE(index.topmostAt(looked, radius).value_or(400), topmost - positions.begin());
            QCOMPARE(index.nearestTo(looked), nearest - positions.begin());
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
        const MarkerIndex index({{std::nan(""), 0}, {0, INFINITY}, {1, 1}});
        QCOMPARE(index.topmostAt({0, 0}, 1000), 2);
        QCOMPARE(index.nearestTo({0, 0}), 2);
        QVERIFY(!MarkerIndex().nearestTo({0, 0}));
    }
};

QTEST_GUILESS_MAIN(MarkerIndexTest)
#include "MarkerIndexTest.moc"

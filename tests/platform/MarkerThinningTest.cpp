// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MarkerThinning.h"
#include "Support/Table.h"

#include <QLineF>
#include <QRandomGenerator>

#include <algorithm>
#include <cmath>

namespace {
constexpr double discPixels = 28;
}

class MarkerThinningTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLevelIsHalfADoubling()
    {
        QCOMPARE(MarkerThinning::levelOf(2), 0);
        QCOMPARE(MarkerThinning::levelOf(181), 10);
        QCOMPARE(MarkerThinning::levelOf(181.1), 11);
        QCOMPARE(MarkerThinning::levelOf(1e6), MarkerThinning::deepestLevel);
    }

    /// At 128 pixels for a degree; mark 0 in the middle.
    void aMarkShowsWhileATenthOfItIsFree_data()
    {
        const Table<QList<QPointF>, bool> row;
        row("beside", {{30, 0}}, true);
        row("mostly over it", {{4, 0}}, true);
        row("all but over it", {{1, 0}}, false);
        row("at its place", {{0, 0}}, false);
        row("mostly over it from both sides", {{-12, 0}, {-6, 0}}, false);
        row("all but slivers of it hidden by two", {{10, -2}, {8, 0}}, false);
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

    /// What is covered but for a tenth has one of those that cover it over its middle, or hardly beside that.
    void whatIsLeftOutOfACrowdIsHidden()
    {
        QRandomGenerator random(7);
        std::vector<QPointF> world;
        world.reserve(400);
        for (int i = 0; i < 400; ++i)
            world.push_back({-18 + random.bounded(1.0), -32 + random.bounded(i % 2 == 0 ? 1.0 : 0.1)});
        const std::vector<quint8> levels = MarkerThinning::levels(world, discPixels);
        for (int level = 0; level <= MarkerThinning::deepestLevel; ++level) {
            const double reach = 0.6 * discPixels / (4 * std::exp2(level / 2.0));
            for (size_t mark = 0; mark < world.size(); ++mark) {
                const auto hides = [&](const QPointF &other) {
                    return levels[size_t(&other - world.data())] <= level
                        && QLineF(other, world[mark]).length() < reach;
                };
                const QString what = QStringLiteral("mark %1 at level %2").arg(mark).arg(level);
                QVERIFY2(levels[mark] <= level || std::any_of(world.begin(), world.begin() + qsizetype(mark), hides),
                         qPrintable(what));
            }
        }
        QVERIFY2(std::ranges::count(levels, 0) < 100, "nothing is left out");
    }

    void whatHasNoPlaceOfItsOwnNeverShows()
    {
        const std::vector<quint8> levels =
            MarkerThinning::levels({{std::nan(""), 0}, {0, INFINITY}, {1, 1}, {1, 1}, {1e300, -1e300}}, discPixels);
        constexpr quint8 never = MarkerThinning::never;
        QCOMPARE(levels, (std::vector<quint8>{never, never, 0, never, 0}));
    }
};

QTEST_GUILESS_MAIN(MarkerThinningTest)
#include "MarkerThinningTest.moc"

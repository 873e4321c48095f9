// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapGeometry.h"
#include "Platform/Map/LabelSpace.h"

#include <QPolygonF>
#include <QTest>

namespace {
const QRectF frame(0, 0, 100, 50);

QString written(const QList<QPointF> &points)
{
    QStringList texts;
    for (const QPointF &point : points)
        texts.append(QStringLiteral("%1,%2").arg(point.x()).arg(point.y()));
    return texts.join(u' ');
}
}

class MapGeometryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAreCutAtTheFrame_data()
    {
        QTest::addColumn<QList<QPointF>>("line");
        QTest::addColumn<QString>("pieces");
        const auto row = [](const char *name, const QList<QPointF> &line, const char *pieces) {
            QTest::newRow(name) << line << QString::fromLatin1(pieces);
        };
        row("inside", {{1, 1}, {2, 2}, {3, 1}}, "1,1 2,2 3,1");
        row("passes through", {{-100, 25}, {200, 25}}, "0,25 100,25");
        row("leaves and comes back", {{50, 25}, {50, 75}, {60, 75}, {60, 25}}, "50,25 50,50 | 60,50 60,25");
        row("passes by a corner", {{-10, 5}, {5, -10}}, "");
        row("outside", {{-1, 10}, {-1, 40}}, "");
        row("along the edge", {{0, 10}, {0, 40}}, "0,10 0,40");
        row("a point", {{5, 5}}, "");
    }

    void linesAreCutAtTheFrame()
    {
        QFETCH(QList<QPointF>, line);
        QStringList pieces;
        for (const QList<QPointF> &piece : MapGeometry::clippedLine(line, frame))
            pieces.append(written(piece));
        QTEST(pieces.join(QStringLiteral(" | ")), "pieces");
    }

    void ringsAreCutForFilling()
    {
        const QList<QPointF> ring{{50, -50}, {250, 25}, {50, 100}};
        const QPolygonF cut(MapGeometry::clippedRing(ring, frame));
        QCOMPARE(cut.boundingRect(), QRectF(50, 0, 50, 50));
        QVERIFY(cut.containsPoint({75, 25}, Qt::OddEvenFill));
        QVERIFY(MapGeometry::clippedRing({{200, 0}, {300, 0}, {300, 9}}, frame).isEmpty());
        const QList<QPointF> around{{-9, -9}, {109, -9}, {109, 59}, {-9, 59}};
        QCOMPARE(QPolygonF(MapGeometry::clippedRing(around, frame)).boundingRect(), frame);
    }

    void thinningKeepsTheEnds()
    {
        const QList<QPointF> line{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {4.5, 0}};
        QCOMPARE(written(MapGeometry::thinned(line, 2)), QStringLiteral("0,0 2,0 4,0 4.5,0"));
    }

    void labelsKeepTheirRoom()
    {
        LabelSpace space({400, 200});
        space.reserve({100, 100, 50, 10});
        QVERIFY(!space.isFree({149, 109, 20, 20}));
        QVERIFY(space.isFree({150, 110, 20, 20}));
        QVERIFY(space.isUncovered({100, 100, 50, 10}));
    }

    /// A circle of radius 14 around (200, 100): below it there is room from 118 on, and in the corner of its square.
    void marksCoverTheirCircle()
    {
        LabelSpace space({400, 200});
        space.cover({200, 100}, 14);
        QVERIFY(!space.isUncovered({198, 110, 4, 1}));
        QVERIFY(space.isUncovered({150, 118, 100, 10}));
        QVERIFY(space.isUncovered({184, 84, 3, 3}));
        QVERIFY(space.isFree({198, 98, 4, 4}));
    }

    void marksReachInFromBeyondTheEdge()
    {
        LabelSpace space({400, 200});
        space.cover({-6, 100}, 14);
        QVERIFY(!space.isUncovered({0, 96, 6, 6}));
        space.cover({1e9, -1e9}, 14);
        QVERIFY(space.isUncovered({300, 0, 100, 100}));
    }
};

QTEST_GUILESS_MAIN(MapGeometryTest)
#include "MapGeometryTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapGeometry.h"
#include "Platform/Map/LabelSpace.h"
#include "Platform/Map/WebMercator.h"
#include "Support/Table.h"

#include <QPolygonF>

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
    void projectionKnowsItsLandmarksBothWays_data()
    {
        const Table<double, double, QString> row;
        row("origin", 0, 0, "0,0");
        row("north is up", 45, -16, "-16,-50.499");
        row("south is down", -45, 16, "16,50.499");
        row("corner of the square", WebMercator::maximumLatitude, 180, "180,-180");
        row("its opposite", -WebMercator::maximumLatitude, -180, "-180,180");
    }

    void projectionKnowsItsLandmarksBothWays()
    {
        const auto [latitude, longitude, expected] = Table<double, double, QString>::current();
        const QPointF world = WebMercator::toWorld(Coordinate{latitude, longitude});
        QCOMPARE(written({world}), expected);
        const Coordinate back = WebMercator::toCoordinate(world);
        QCOMPARE(1 + back.latitude, 1 + latitude);
        QCOMPARE(back.longitude, longitude);
    }

    void linesAreCutAtTheFrame_data()
    {
        const Table<QList<QPointF>, QString> row;
        row("inside", {{1, 1}, {2, 2}, {3, 1}}, "1,1 2,2 3,1");
        row("passes through", {{-100, 25}, {200, 25}}, "0,25 100,25");
        row("leaves and comes back", {{50, 25}, {50, 75}, {60, 75}, {60, 25}}, "50,25 50,50 | 60,50 60,25");
        row("passes by a corner", {{-10, 5}, {5, -10}}, "");
        row("along the edge", {{0, 10}, {0, 40}}, "0,10 0,40");
        row("a point", {{5, 5}}, "");
    }

    void linesAreCutAtTheFrame()
    {
        const auto [line, expected] = Table<QList<QPointF>, QString>::current();
        QStringList pieces;
        for (const QList<QPointF> &piece : MapGeometry::clippedLine(line, frame))
            pieces.append(written(piece));
        QCOMPARE(pieces.join(QStringLiteral(" | ")), expected);
    }

    void ringsAreCutForFilling()
    {
        const QPolygonF cut(MapGeometry::clippedRing({{50, -50}, {250, 25}, {50, 100}}, frame));
        QCOMPARE(cut.boundingRect(), QRectF(50, 0, 50, 50));
        QVERIFY(cut.containsPoint({75, 25}, Qt::OddEvenFill));
        QVERIFY(MapGeometry::clippedRing({{200, 0}, {300, 0}, {300, 9}}, frame).isEmpty());
    }

    void thinningKeepsTheEnds()
    {
        const QList<QPointF> line{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}, {4.5, 0}};
        QCOMPARE(written(MapGeometry::thinned(line, 2)), QStringLiteral("0,0 2,0 4,0 4.5,0"));
    }

    /// A circle of radius 14 around (200, 100): below it there is room from 118 on, and in the corner of its square.
    void labelsAndMarksKeepTheirRoom()
    {
        LabelSpace space({400, 200});
        space.reserve({100, 100, 50, 10});
        QVERIFY(!space.isFree({149, 109, 20, 20}));
        QVERIFY(space.isFree({150, 110, 20, 20}));
        QVERIFY(space.isUncovered({100, 100, 50, 10}));
        space.cover({200, 100}, 14);
        QVERIFY(!space.isUncovered({198, 110, 4, 1}));
        QVERIFY(space.isUncovered({150, 118, 100, 10}));
        QVERIFY(space.isUncovered({184, 84, 3, 3}));
        space.cover({-6, 100}, 14);
        QVERIFY2(!space.isUncovered({0, 96, 6, 6}), "a mark beyond the edge does not reach in");
    }
};

QTEST_GUILESS_MAIN(MapGeometryTest)
#include "MapGeometryTest.moc"

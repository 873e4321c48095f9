// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapCamera.h"

#include <QTest>

#include <cmath>

namespace {
constexpr CoordinateRegion islands{{28.3, -15.8}, {8.0, 10.0}};
/// From 15 to 43.5 north and from 36 west to 6 east.
const MapLimits limits{{{29.25, -15}, {28.5, 42}}, 40, 0.02};

MapCamera cameraOf(double width, double height)
{
    MapCamera camera(limits);
    camera.resize({width, height});
    camera.fit(islands);
    return camera;
}

bool near(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}

bool near(const QPointF &a, const QPointF &b, double tolerance)
{
    return near(a.x(), b.x(), tolerance) && near(a.y(), b.y(), tolerance);
}
}

class MapCameraTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void projectionKnowsItsLandmarks_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::addColumn<QPointF>("world");
        QTest::newRow("origin") << 0.0 << 0.0 << QPointF(0, 0);
        QTest::newRow("north is up") << 45.0 << -16.0 << QPointF(-16, -50.4989867);
        QTest::newRow("south is down") << -45.0 << 16.0 << QPointF(16, 50.4989867);
        QTest::newRow("corner of the square") << 85.0511287798 << 180.0 << QPointF(180, -180);
        QTest::newRow("the pole lies on the edge") << 90.0 << 0.0 << QPointF(0, -180);
    }

    void projectionKnowsItsLandmarks()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        QFETCH(QPointF, world);
        QVERIFY(near(WebMercator::toWorld(Coordinate{latitude, longitude}), world, 1e-6));
    }

    void projectionComesBack_data()
    {
        QTest::addColumn<double>("latitude");
        QTest::addColumn<double>("longitude");
        QTest::newRow("El Hierro") << 27.7 << -18.1;
        QTest::newRow("northern limit") << WebMercator::maximumLatitude << 180.0;
        QTest::newRow("southern limit") << -WebMercator::maximumLatitude << -180.0;
        QTest::newRow("equator") << 0.0 << -180.0;
    }

    void projectionComesBack()
    {
        QFETCH(double, latitude);
        QFETCH(double, longitude);
        const Coordinate back = WebMercator::toCoordinate(WebMercator::toWorld(Coordinate{latitude, longitude}));
        QVERIFY(near(back.latitude, latitude, 1e-9));
        QCOMPARE(back.longitude, longitude);
    }

    /// The whole region shows, and one of its sides fills the window: the taller window is filled by the width.
    void regionFitsAsAWhole_data()
    {
        QTest::addColumn<QSizeF>("window");
        QTest::addColumn<bool>("isLimitedByHeight");
        QTest::newRow("wide") << QSizeF(1100, 720) << true;
        QTest::newRow("very wide") << QSizeF(1600, 500) << true;
        QTest::newRow("tall") << QSizeF(480, 720) << false;
        QTest::newRow("very tall") << QSizeF(200, 650) << false;
    }

    void regionFitsAsAWhole()
    {
        QFETCH(QSizeF, window);
        QFETCH(bool, isLimitedByHeight);
        const MapCamera camera = cameraOf(window.width(), window.height());
        const CoordinateRegion shown = camera.region();
        if (isLimitedByHeight) {
            QVERIFY(near(shown.span.latitudeDelta, 8.0, 1e-9));
            QVERIFY(shown.span.longitudeDelta > 10.0);
        } else {
            QVERIFY(near(shown.span.longitudeDelta, 10.0, 1e-9));
            QVERIFY(shown.span.latitudeDelta > 8.0);
        }
        QVERIFY(near(camera.center().x(), -15.8, 1e-9));
    }

    void regionFitsBesideWhatIsCovered()
    {
        MapCamera camera(limits);
        camera.resize({1100, 720});
        camera.fit(islands, {0, 120, 0, 0});
        const QPointF top = camera.toScreen(WebMercator::toWorld(Coordinate{32.3, -15.8}));
        const QPointF bottom = camera.toScreen(WebMercator::toWorld(Coordinate{24.3, -15.8}));
        QVERIFY(near(top, {550, 120}, 1e-6));
        QVERIFY(near(bottom, {550, 720}, 1e-6));
    }

    void zoomHoldsThePlaceUnderThePointer()
    {
        MapCamera camera = cameraOf(1100, 720);
        const QPointF pointer(800, 500);
        const QPointF held = camera.toWorld(pointer);
        const double before = camera.scale();
        camera.zoom(4, pointer);
        QVERIFY(near(camera.scale(), before * 4, 1e-9));
        QVERIFY(near(camera.toWorld(pointer), held, 1e-9));
    }

    void zoomEndsAtTheLimits()
    {
        MapCamera camera = cameraOf(1100, 720);
        camera.zoom(1e9, {550, 360});
        QVERIFY(near(camera.region().span.longitudeDelta, 0.02, 1e-9));
        camera.zoom(1e-9, {0, 0});
        QVERIFY(near(camera.region().span.longitudeDelta, 40, 1e-9));
        camera.zoom(0, {0, 0});
        camera.zoom(std::nan(""), {0, 0});
        QVERIFY(near(camera.region().span.longitudeDelta, 40, 1e-9));
    }

    /// A tall narrow window would look over the edge of the map before it is 40 degrees wide.
    void theEdgeOfTheMapStaysOutOfSight()
    {
        MapCamera camera = cameraOf(300, 1200);
        camera.zoom(1e-9, {150, 600});
        QVERIFY(near(camera.region().span.latitudeDelta, 28.5, 1e-6));
        camera.pan({1e6, 1e6});
        QVERIFY(near(camera.visibleWorld().left(), -36, 1e-9));
        camera.pan({-1e6, -1e6});
        QVERIFY(near(camera.visibleWorld().right(), 6, 1e-9));
    }

    void screenAndWorldAgreeDeepDown()
    {
        MapCamera camera = cameraOf(1100, 720);
        camera.zoom(1e9, {550, 360});
        camera.pan({123, -45});
        QVERIFY(near(camera.toScreen(camera.toWorld({1099, 1})), {1099, 1}, 1e-4));
        const QPointF corner = camera.toWorld({0, 0});
        camera.pan({10, 20});
        QVERIFY(near(camera.toScreen(corner), {10, 20}, 1e-4));
    }

    void resizingKeepsCentreAndScale()
    {
        MapCamera camera = cameraOf(1100, 720);
        camera.zoom(8, {200, 300});
        const MapCamera before = camera;
        camera.resize({640, 480});
        QCOMPARE(camera.center(), before.center());
        QCOMPARE(camera.scale(), before.scale());
        QVERIFY(near(camera.toScreen(before.center()), {320, 240}, 1e-9));
    }

    /// 1000 px/s slow down over a way of 250 px, of which 63.2 % are behind after a quarter of a second.
    void aThrowSlowsDownAndRests()
    {
        const MapThrow thrown({1000, 0});
        QVERIFY(near(thrown.travelled(0), {0, 0}, 1e-9));
        QVERIFY(near(thrown.travelled(0.25), {158.03, 0}, 0.01));
        QVERIFY(near(thrown.travelled(thrown.duration()), {249.5, 0}, 0.01));
        QCOMPARE(MapThrow({40, 30}).duration(), 0.0);
        QCOMPARE(MapThrow({40, 30}).travelled(1), QPointF());
    }
};

QTEST_GUILESS_MAIN(MapCameraTest)
#include "MapCameraTest.moc"

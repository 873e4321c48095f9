// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Models/Region.h"
#include "Platform/Map/MapController.h"
#include "Support/Table.h"
#include "Support/World.h"
#include "iOS/Shared/EarthquakeMarkerLayer.h"
#include "iOS/Shared/MarkerDisc.h"
#include "iOS/Shared/RippleCircle.h"

#include <QAbstractItemModelTester>
#include <QPainter>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <cmath>

namespace {
constexpr QSize windowSize(600, 400);

bool isLike(const QColor &a, const QColor &b)
{
    constexpr int tolerance = 6;
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance
        && std::abs(a.blue() - b.blue()) <= tolerance;
}

/// A layer over a white window of 600 by 400 that looks at the archipelago.
class Map
{
public:
    Map()
    {
        controller.setRegion(Region::canaryIslands().mapRegion());
        controller.setSize(windowSize);
        layer.setController(&controller);
        layer.setMarkers(&set);
        layer.setSize(windowSize);
        layer.setParentItem(window.contentItem());
        window.setColor(Qt::white);
        window.resize(windowSize);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("the window does not show");
    }

    ~Map() { layer.setParentItem(nullptr); }

    /// An event whose place is at a point of the window as it was in the beginning; the first is the newest.
    Earthquake at(const QPointF &point, double magnitude)
    {
        const Coordinate coordinate = WebMercator::toCoordinate(controller.camera().toWorld(point));
        const auto age = std::chrono::hours(++m_made);
        return {QString::number(m_made),
                world.clock.now() - age,
                coordinate.latitude,
                coordinate.longitude,
                10,
                magnitude,
                QStringLiteral("mbLg"),
                std::nullopt,
                QStringLiteral("NW TENERIFE")};
    }

    QColor colorAt(const QPoint &point)
    {
        const QImage image = window.grabWindow();
        return image.pixelColor(point * image.devicePixelRatio());
    }

    World world;
    QQuickWindow window;
    MapController controller;
    EarthquakeMarkerSet set;
    EarthquakeMarkerLayer layer;

private:
    int m_made = 0;
};

/// The raised markers and what they are, parted by commas.
QString raised(EarthquakeMarkerLayer &layer)
{
    QStringList texts;
    for (int row = 0; row < layer.raised()->rowCount(); ++row) {
        const auto value = [&](RaisedMarkers::Role role) { return layer.raised()->index(row).data(role); };
        texts.append(value(RaisedMarkers::eventIDRole).toString()
                     + (value(RaisedMarkers::isLatestRole).toBool() ? QStringLiteral(" latest") : QString())
                     + (value(RaisedMarkers::isSelectedRole).toBool() ? QStringLiteral(" selected") : QString()));
    }
    return texts.join(u',');
}
}

/// Runs once with shaders and once with the renderer that has none: what is drawn is the same.
class EarthquakeMarkersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Magnitudes are off the middle, where the text is not. The latest marker is an item of its own and not drawn.
    void markersAreDrawnAtTheirPlaces()
    {
        Map map;
        map.set.setEarthquakes({map.at({500, 300}, 1), map.at({100, 100}, 4.5), map.at({200, 300}, 6.2)});
        QVERIFY(isLike(map.colorAt({100, 91}), MagnitudeCategory(MagnitudeCategory::moderate).color()));
        QVERIFY(isLike(map.colorAt({200, 309}), MagnitudeCategory(MagnitudeCategory::strong).color()));
        QVERIFY(isLike(map.colorAt({100, 82}), Qt::white));
        QVERIFY(isLike(map.colorAt({500, 291}), Qt::white));
    }

    /// One that was selected goes back among the others: nothing must jump.
    void aMarkerLooksTheSameAsAnItem()
    {
        Map map;
        MarkerDisc item(map.window.contentItem());
        item.setMagnitude(4.5);
        item.setDiameter(28);
        item.setFontSize(9);
        item.setShadowRadius(1);
        item.setPosition({384, 84});
        map.set.setEarthquakes({map.at({500, 300}, 1), map.at({100, 100}, 4.5)});
        const QImage seen = map.window.grabWindow();
        QCOMPARE(seen.copy(84, 84, 32, 32), seen.copy(384, 84, 32, 32));
    }

    void aFadedLayerLetsTheGroundThrough()
    {
        Map map;
        map.layer.setOpacity(0.5);
        map.set.setEarthquakes({map.at({500, 300}, 1), map.at({100, 100}, 4.5)});
        QVERIFY(isLike(map.colorAt({100, 91}), QColor::fromRgbF(1, 0.8F, 0.5F)));
    }

    /// Magnified, so that a stroke of a digit fills whole pixels.
    void theMagnitudeIsThreeQuartersBlack()
    {
        QImage image(256, 256, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(8, 8);
        MarkerLook look;
        look.category = MagnitudeCategory::moderate;
        look.text = QStringLiteral("4.5");
        paintMarker(painter, look, {0, 0, 32, 32});
        int darkest = 255;
        for (int x = 0; x < 256; ++x)
            for (int y = 0; y < 256; ++y)
                darkest = std::min(darkest, qRed(image.pixel(x, y)));
        QVERIFY2(std::abs(darkest - 64) <= 2, qPrintable(QString::number(darkest)));
    }

    /// Over white: red at 0.75 up to the middle, yellow at 0.3 at the right edge.
    void aRingFadesFromRedToYellow()
    {
        Map map;
        RippleCircle ring(map.window.contentItem());
        ring.setDiameter(40);
        ring.setLineWidth(4);
        ring.setPosition(QPointF(100, 100) - QPointF(ring.width(), ring.height()) / 2);
        QVERIFY(isLike(map.colorAt({80, 100}), QColor(255, 108, 100)));
        QVERIFY(isLike(map.colorAt({100, 80}), QColor(255, 108, 100)));
        QVERIFY(isLike(map.colorAt({119, 100}), QColor(255, 240, 179)));
        QVERIFY(isLike(map.colorAt({100, 100}), Qt::white));
    }

    void newerMarkersLieAboveOlderOnes()
    {
        Map map;
        map.set.setEarthquakes({map.at({500, 300}, 1), map.at({100, 100}, 4.5), map.at({118, 100}, 6.2)});
        QVERIFY(isLike(map.colorAt({109, 94}), MagnitudeCategory(MagnitudeCategory::moderate).color()));
    }

    void markersFollowTheMap()
    {
        Map map;
        map.set.setEarthquakes({map.at({500, 300}, 1), map.at({300, 200}, 4.5)});
        map.controller.setStill(true);
        map.controller.grab();
        map.controller.drag(40, -30);
        map.controller.turnWheel(240, 340, 170);
        QVERIFY(isLike(map.colorAt({340, 161}), MagnitudeCategory(MagnitudeCategory::moderate).color()));
        QVERIFY(isLike(map.colorAt({340, 190}), Qt::white));
    }

    void raisedMarkersAreLeftOutAndComeBack()
    {
        Map map;
        map.set.setEarthquakes({map.at({500, 300}, 1), map.at({100, 100}, 4.5)});
        const Earthquake second = map.set.earthquakes()[1];
        map.set.setSelected(second);
        QVERIFY(isLike(map.colorAt({100, 91}), Qt::white));
        map.set.setSelected(std::nullopt);
        QVERIFY(isLike(map.colorAt({100, 91}), Qt::white));
        map.layer.raised()->settle(second.eventID());
        QVERIFY(isLike(map.colorAt({100, 91}), MagnitudeCategory(MagnitudeCategory::moderate).color()));
    }

    /// A picture of a window that does not show has its nodes made for it and thrown away, as a window has that is
    /// hidden and shown again.
    void markersOutliveTheirNodes()
    {
        Map map;
        map.window.hide();
        map.set.setEarthquakes({map.at({500, 300}, 1), map.at({100, 100}, 4.5)});
        for (int picture = 0; picture < 2; ++picture)
            QVERIFY(isLike(map.colorAt({100, 91}), MagnitudeCategory(MagnitudeCategory::moderate).color()));
    }

    void dotsStandOnTheirPlace()
    {
        Map map;
        map.layer.setStyle(EarthquakeMarkerLayer::Style::dots);
        map.set.setEarthquakes({map.at({100, 100}, 4.5)});
        // 55 % of the colour over white.
        const QColor pale = QColor::fromRgbF(1.0F, 1 - 0.55F * 0.4F, 1 - 0.55F);
        QVERIFY(isLike(map.colorAt({100, 93}), pale));
        QVERIFY(isLike(map.colorAt({100, 103}), Qt::white));
        QCOMPARE(map.layer.raised()->rowCount(), 0);
    }

    /// The software renderer has no geometry to upload, and the test would hold for nothing.
    void movingTheMapUploadsNoGeometry()
    {
        Map map;
        std::vector<Earthquake> events;
        events.reserve(50);
        for (int i = 0; i < 50; ++i)
            events.push_back(map.at({100.0 + 8 * i, 200}, 1));
        map.set.setEarthquakes(events);
        map.window.grabWindow();
        const qint64 before = map.layer.uploadedBytes();
        const bool hasShaders = map.window.rendererInterface()->graphicsApi() != QSGRendererInterface::Software;
        // Fifty quads of four vertices of 16 bytes and six indices of 4.
        QCOMPARE(before, hasShaders ? 50 * (4 * 16 + 6 * 4) : 0);
        map.controller.setStill(true);
        for (int step = 0; step < 5; ++step) {
            map.controller.drag(7, 3);
            map.controller.turnWheel(120, 300, 200);
            map.set.setSelected(events[size_t(step)]);
            map.window.grabWindow();
        }
        QCOMPARE(map.layer.uploadedBytes(), before);
        map.set.setEarthquakes({events[0]});
        map.window.grabWindow();
        QCOMPARE(map.layer.uploadedBytes(), before + (hasShaders ? 4 * 16 + 6 * 4 : 0));
    }

    void theUppermostMarkerUnderThePointerIsTaken_data()
    {
        Table<QPointF, bool, QString> row;
        row("middle", {100, 100}, false, "1");
        row("inside the edge", {86.1, 100}, false, "1");
        row("outside the edge", {85.9, 100}, false, "");
        row("corner of the square", {88, 88}, false, "");
        row("newer above older", {110, 100}, false, "1");
        row("the older one's free part", {124, 100}, false, "2");
        row("inside a finger's reach", {78.1, 100}, true, "1");
        row("outside a finger's reach", {77.9, 100}, true, "");
        row("selected, inside its edge", {321.5, 300}, false, "4");
        row("selected, outside its edge", {321.7, 300}, false, "");
        row("selected, above a newer one", {290, 300}, false, "4");
        row("the newer one's free part", {270, 300}, false, "3");
    }

    void theUppermostMarkerUnderThePointerIsTaken()
    {
        const auto [point, byFinger, eventID] = Table<QPointF, bool, QString>::current();
        Map map;
        map.set.setEarthquakes(
            {map.at({100, 100}, 1), map.at({115, 100}, 1), map.at({280, 300}, 1), map.at({300, 300}, 1)});
        map.set.setSelected(map.set.earthquakes()[3]);
        const auto found = map.layer.earthquakeAt(point, byFinger);
        QCOMPARE(found ? found->eventID() : QString(), eventID);
    }

    void latestAndSelectedAreRaised()
    {
        Map map;
        const QAbstractItemModelTester tester(map.layer.raised(),
                                              QAbstractItemModelTester::FailureReportingMode::Fatal);
        const std::vector<Earthquake> events{map.at({100, 100}, 1), map.at({200, 100}, 1), map.at({300, 100}, 1)};
        map.set.setEarthquakes(events);
        QCOMPARE(raised(map.layer), QStringLiteral("1 latest"));
        map.set.setSelected(events[1]);
        QCOMPARE(raised(map.layer), QStringLiteral("1 latest,2 selected"));
        map.set.setSelected(events[2]);
        QCOMPARE(raised(map.layer), QStringLiteral("1 latest,2,3 selected"));
        map.layer.raised()->settle(QStringLiteral("2"));
        map.layer.raised()->settle(QStringLiteral("3"));
        QCOMPARE(raised(map.layer), QStringLiteral("1 latest,3 selected"));
        map.set.setSelected(events[0]);
        map.layer.raised()->settle(QStringLiteral("3"));
        QCOMPARE(raised(map.layer), QStringLiteral("1 latest selected"));
    }

    void anEventThatLeavesTheMapIsNoLongerRaised()
    {
        Map map;
        const std::vector<Earthquake> events{map.at({100, 100}, 1), map.at({200, 100}, 1), map.at({300, 100}, 1)};
        map.set.setEarthquakes(events);
        map.set.setSelected(events[0]);
        map.set.setEarthquakes({events[1], events[2]});
        QCOMPARE(raised(map.layer), QStringLiteral("2 latest"));
        QVERIFY(!map.layer.earthquakeAt({100, 100}, false));
        map.set.setEarthquakes({});
        QCOMPARE(raised(map.layer), QString());
        QVERIFY(isLike(map.colorAt({200, 91}), Qt::white));
    }

    void manyOddMagnitudesKeepTheirColour()
    {
        MarkerAtlas atlas;
        for (int i = 0; i < 5000; ++i)
            atlas.cellOf(-i);
        const int full = atlas.cellCount();
        QVERIFY(full <= 64 * 256);
        QCOMPARE(atlas.cellOf(4.54321), atlas.cellOf(5.9));
        QVERIFY(atlas.cellOf(4.54321) != atlas.cellOf(6.9));
        QCOMPARE(atlas.cellCount(), full);
    }

    void equalTextsShareACellAndBandsDoNot()
    {
        MarkerAtlas atlas;
        QCOMPARE(atlas.cellOf(2.31), atlas.cellOf(2.33));
        QVERIFY(atlas.cellOf(3.96) != atlas.cellOf(4.0));
    }

    /// Those beside the window too: it may be moved there before the next picture is painted.
    void everyBadgeAsksForItsTitleNewestFirst()
    {
        Map map;
        std::vector<Earthquake> events;
        events.reserve(250);
        for (int i = 0; i < 250; ++i) {
            const int row = i / 25;
            events.push_back(map.at({-280.0 + 40 * (i % 25), -150.0 + 40 * row}, 1));
        }
        map.set.setEarthquakes(events);
        const auto kept = map.layer.annotations(map.controller.camera());
        QCOMPARE(kept->titles.size(), events.size());
        for (size_t i = 0; i < events.size(); ++i)
            QCOMPARE(kept->titles[i].world, WebMercator::toWorld(events[i].coordinate()));
    }

    /// From 14 pixels to 18 with half a ring of 2.5, a fifth larger.
    void theTitleOfTheSelectedStandsBelowItsLargerBadge()
    {
        Map map;
        map.set.setEarthquakes({map.at({100, 100}, 1), map.at({200, 100}, 1)});
        QSignalSpy repaints(&map.layer, &MapAnnotationSource::annotationsChanged);
        map.set.setSelected(map.set.earthquakes()[1]);
        QCOMPARE(repaints.count(), 1);
        const auto kept = map.layer.annotations(map.controller.camera());
        QCOMPARE(kept->titles[0].drop, 0.0);
        QCOMPARE(kept->titles[1].drop, (18 + 1.25) * 1.2 - 14);
    }

    void whatStandsAmongDotsHasTheFirstTitle()
    {
        Map map;
        map.layer.setStyle(EarthquakeMarkerLayer::Style::dots);
        const auto kept = [&] { return map.layer.annotations(map.controller.camera()); };
        QVERIFY(!kept());
        map.set.setEarthquakes({map.at({100, 100}, 2)});
        QCOMPARE(kept()->titles.size(), size_t(1));
        const Earthquake standing = map.at({300, 200}, 3);
        map.set.setSelected(standing);
        QCOMPARE(kept()->titles.size(), size_t(2));
        QCOMPARE(kept()->titles.front().world, WebMercator::toWorld(standing.coordinate()));
        QCOMPARE(kept()->positions.size(), size_t(3));
        map.set.setEarthquakes({});
        QCOMPARE(kept()->titles.size(), size_t(1));
    }
};

QTEST_MAIN(EarthquakeMarkersTest)
#include "EarthquakeMarkersTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Models/Region.h"
#include "Platform/Map/MapController.h"
#include "Support/Table.h"
#include "Support/World.h"
#include "iOS/Shared/EarthquakeMarkerLayer.h"
#include "iOS/Shared/RippleCircle.h"

#include <QAbstractItemModelTester>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {
constexpr QSize windowSize(600, 400);
const QColor moderate = MagnitudeCategory(MagnitudeCategory::moderate).color();
const QColor strong = MagnitudeCategory(MagnitudeCategory::strong).color();

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
    Earthquake at(const QPointF &point, double magnitude = 1)
    {
        const Coordinate place = WebMercator::toCoordinate(controller.camera().toWorld(point));
        const Instant date = world.clock.now() - std::chrono::hours(++m_made);
        return Earthquake(QString::number(m_made), date, place.latitude, place.longitude, 10, magnitude, u"mbLg"_s,
                          std::nullopt, u"NW TENERIFE"_s);
    }

    /// Whether a point of the window has this colour, about.
    bool shows(const QPoint &point, const QColor &color)
    {
        const QImage image = window.grabWindow();
        const QColor seen = image.pixelColor(point * image.devicePixelRatio());
        return std::max({std::abs(seen.red() - color.red()), std::abs(seen.green() - color.green()),
                         std::abs(seen.blue() - color.blue())})
            <= 6;
    }

    /// The raised markers and what they are, parted by commas.
    QString raised()
    {
        QStringList texts;
        for (int row = 0; row < layer.raised()->rowCount(); ++row) {
            const auto value = [&](RaisedMarkers::Role role) { return layer.raised()->index(row).data(role); };
            texts.append(value(RaisedMarkers::eventIDRole).toString()
                         + (value(RaisedMarkers::isLatestRole).toBool() ? u" latest"_s : QString())
                         + (value(RaisedMarkers::isSelectedRole).toBool() ? u" selected"_s : QString()));
        }
        return texts.join(u',');
    }

    World world;
    QQuickWindow window;
    MapController controller;
    EarthquakeMarkerSet set;
    EarthquakeMarkerLayer layer;

private:
    int m_made = 0;
};
}

/// Runs once with shaders and once with the renderer that has none: what is drawn is the same.
class EarthquakeMarkersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Magnitudes are off the middle, where the text is not. The latest marker is an item of its own and not drawn.
    void markersAreDrawnAtTheirPlacesAndFollowTheMap()
    {
        Map map;
        map.set.setEarthquakes({map.at({500, 300}), map.at({100, 100}, 4.5), map.at({118, 100}, 6.2)});
        QVERIFY(map.shows({100, 91}, moderate));
        QVERIFY2(map.shows({109, 94}, moderate), "the newer one lies above");
        QVERIFY(map.shows({118, 109}, strong));
        QVERIFY(map.shows({100, 82}, Qt::white));
        QVERIFY(map.shows({500, 291}, Qt::white));
        map.controller.setStill(true);
        map.controller.grab();
        map.controller.drag(40, -30);
        map.controller.turnWheel(240, 140, 70);
        QVERIFY(map.shows({140, 61}, moderate));
        QVERIFY(map.shows({140, 90}, Qt::white));
    }

    /// A window that is hidden may throw its nodes away, and makes them anew when it shows again.
    void markersOutliveTheirNodes()
    {
        Map map;
        map.set.setEarthquakes({map.at({500, 300}), map.at({100, 100}, 4.5)});
        QVERIFY(map.shows({100, 91}, moderate));
        map.window.setPersistentSceneGraph(false);
        map.window.hide();
        QSignalSpy frames(&map.window, &QQuickWindow::frameSwapped);
        map.window.show();
        QVERIFY(frames.wait());
        QVERIFY(map.shows({100, 91}, moderate));
    }

    void aRingFadesFromRedToYellow()
    {
        Map map;
        RippleCircle ring(map.window.contentItem());
        ring.setDiameter(40);
        ring.setLineWidth(4);
        ring.setPosition(QPointF(100, 100) - QPointF(ring.width(), ring.height()) / 2);
        QVERIFY(map.shows({80, 100}, QColor(255, 108, 100)) && map.shows({119, 100}, QColor(255, 240, 179)));
        QVERIFY(map.shows({100, 100}, Qt::white));
    }

    void dotsStandOnTheirPlace()
    {
        Map map;
        map.layer.setStyle(EarthquakeMarkerLayer::Style::dots);
        map.set.setEarthquakes({map.at({100, 100}, 4.5)});
        // 55 % of the colour over white.
        QVERIFY(map.shows({100, 93}, QColor::fromRgbF(1.0F, 1 - 0.55F * 0.4F, 1 - 0.55F)));
        QVERIFY(map.shows({100, 103}, Qt::white));
        QCOMPARE(map.layer.raised()->rowCount(), 0);
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
        map.set.setEarthquakes({map.at({100, 100}), map.at({115, 100}), map.at({280, 300}), map.at({300, 300})});
        map.set.setSelected(map.set.earthquakes()[3]);
        const auto found = map.layer.earthquakeAt(point, byFinger);
        QCOMPARE(found ? found->eventID() : QString(), eventID);
    }

    /// They are items of their own, which the layer leaves out; what was selected is one until it has shrunk.
    void latestAndSelectedAreRaised()
    {
        Map map;
        const QAbstractItemModelTester tester(map.layer.raised(),
                                              QAbstractItemModelTester::FailureReportingMode::Fatal);
        const std::vector<Earthquake> events{map.at({500, 300}), map.at({200, 100}), map.at({100, 100}, 4.5)};
        map.set.setEarthquakes(events);
        QCOMPARE(map.raised(), u"1 latest"_s);
        map.set.setSelected(events[1]);
        QCOMPARE(map.raised(), u"1 latest,2 selected"_s);
        map.set.setSelected(events[2]);
        QCOMPARE(map.raised(), u"1 latest,2,3 selected"_s);
        map.layer.raised()->settle(u"2"_s);
        map.layer.raised()->settle(u"3"_s);
        QCOMPARE(map.raised(), u"1 latest,3 selected"_s);
        map.set.setSelected(events[0]);
        QVERIFY(map.shows({100, 91}, Qt::white));
        map.layer.raised()->settle(u"3"_s);
        QVERIFY(map.shows({100, 91}, moderate));
        QCOMPARE(map.raised(), u"1 latest selected"_s);
        // What leaves the map is raised no more, selected or not.
        map.set.setEarthquakes({events[1], events[2]});
        QCOMPARE(map.raised(), u"2 latest"_s);
        QVERIFY(!map.layer.earthquakeAt({500, 300}, false));
        map.set.setEarthquakes({});
        QCOMPARE(map.raised(), QString());
        QVERIFY(map.shows({100, 91}, Qt::white));
    }

    void manyOddMagnitudesKeepTheirColour()
    {
        MarkerAtlas atlas;
        QVERIFY(atlas.cellOf(3.96) != atlas.cellOf(4.0));
        for (int i = 0; i < 5000; ++i)
            atlas.cellOf(-i);
        QVERIFY(atlas.cellCount() <= 64 * 256);
        QCOMPARE(atlas.cellOf(4.54321), atlas.cellOf(5.9));
        QVERIFY(atlas.cellOf(4.54321) != atlas.cellOf(6.9));
    }

    /// The badges ask for theirs newest first, also beside the window, which may be moved there before the next
    /// picture.
    void everyEventAsksForItsTitle()
    {
        Map map;
        map.set.setEarthquakes({map.at({-280, -150}), map.at({100, 100}), map.at({680, 450})});
        QSignalSpy repaints(&map.layer, &MapAnnotationSource::annotationsChanged);
        map.set.setSelected(map.set.earthquakes()[1]);
        QCOMPARE(repaints.count(), 1);
        const auto kept = map.layer.annotations(map.controller.camera());
        QCOMPARE(kept->titles.size(), size_t(3));
        for (size_t i = 0; i < 3; ++i) {
            QCOMPARE(kept->titles[i].world, WebMercator::toWorld(map.set.earthquakes()[i].coordinate()));
            // That of the selected one below its larger badge: from 14 pixels to 18 with half a ring of 2.5, a fifth
            // larger.
            QCOMPARE(kept->titles[i].drop, i == 1 ? (18 + 1.25) * 1.2 - 14 : 0.0);
        }
    }

    void whatStandsAmongDotsHasTheFirstTitle()
    {
        Map map;
        map.layer.setStyle(EarthquakeMarkerLayer::Style::dots);
        const auto kept = [&] { return map.layer.annotations(map.controller.camera()); };
        QVERIFY(!kept());
        map.set.setEarthquakes({map.at({100, 100}, 2)});
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "DrawnView.h"
#include "Platform/Map/MapController.h"
#include "Support/AnimationClock.h"
#include "Support/ShownWindow.h"
#include "iOS/Shared/EarthquakeMarkerLayer.h"

#include <QSGRendererInterface>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// To twentieths: what animations reach a millisecond sooner or later is the same.
QString numbers(const QList<double> &values)
{
    QStringList texts;
    for (const double value : values)
        texts.append(QString::number(std::round(value * 20) / 20, 'f', 2));
    return texts.join(u' ');
}

/// The map section of the main window over three events: 1, the newest, near Lanzarote, 2 at La Palma, 3 south of it.
class MapSection
{
public:
    MapSection()
    {
        const Instant now = shown.world.clock.now();
        const auto event = [&](const QString &id, int hours, double latitude, double longitude, double magnitude) {
            return ParsedEarthquake(id, now - std::chrono::hours(hours), latitude, longitude, 38, magnitude, u"mbLg"_s,
                                    std::nullopt, u"W FRONTERA.IHI"_s);
        };
        shown.enqueuePage({event(u"1"_s, 1, 29.4, -12.9, 1.5), event(u"2"_s, 2, 28.6, -17.9, 4.1),
                           event(u"3"_s, 3, 27.6, -17.9, 6.2)});
    }

    /// False where the window warned or the renderer has no shaders, so that what is looked at would not be the map.
    bool open()
    {
        if (!shown.show())
            return false;
        shown.press(Qt::Key_3, Qt::ControlModifier);
        return shown.item("map") && shown.window().rendererInterface()->graphicsApi() != QSGRendererInterface::Software
            && becomesSharp();
    }

    bool becomesSharp()
    {
        return QTest::qWaitFor([this] {
            shown.pass(std::chrono::milliseconds(100));
            return shown.item("map")->property("isSharp").toBool();
        });
    }

    /// False where the scale does not come to this, about.
    bool zoomsTo(double scale)
    {
        return QTest::qWaitFor([&] {
            move(20ms);
            return std::abs(camera().scale() / scale - 1) < 0.01;
        });
    }

    const MapCamera &camera() { return layer()->controller()->camera(); }
    EarthquakeMarkerLayer *layer() { return static_cast<EarthquakeMarkerLayer *>(shown.item("markers")); }

    /// A place of the world in the window.
    QPoint at(double latitude, double longitude)
    {
        const QPointF place = camera().toScreen(WebMercator::toWorld(Coordinate{latitude, longitude}));
        return layer()->mapToScene(place).toPoint();
    }

    void click(const QPoint &point)
    {
        QTest::mouseClick(&shown.window(), Qt::LeftButton, Qt::NoModifier, point);
        shown.settle();
        move(1s);
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        shown.press(key, modifiers);
        move(1s);
    }

    /// Lets what moves go on for a while.
    void move(std::chrono::milliseconds time)
    {
        animations.pass(time);
        shown.settle();
    }

    bool hasCallout() { return shown.named("Ver detalle") != nullptr; }

    AnimationClock animations;
    ShownWindow shown;
};
}

class MapViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePictureIsThatOfTheData()
    {
        MapSection map;
        // The ring of the latest marker stands still, out of the way.
        map.shown.world.appearance.setReducedMotion(true);
        QVERIFY(map.open());
        const QQuickItem *item = map.shown.item("map");
        const QSize size = item->size().toSize();
        for (const bool isSelected : {false, true}) {
            if (isSelected)
                map.click(map.at(28.6, -17.9));
            QVERIFY(map.becomesSharp());
            DrawnView drawn(size);
            drawn.addDisc({29.4, -12.9}, QColor(0xFFF7A6), 28);
            drawn.addDisc({27.6, -17.9}, QColor(0xE65900), 28);
            drawn.addDisc({28.6, -17.9}, QColor(0xFF9900), isSelected ? 36 * 1.2 : 28, isSelected ? 2.5 * 1.2 : 0);
            const QImage seen = map.shown.window().grabWindow().copy({item->mapToScene({0, 0}).toPoint(), size});
            // 5 % of one and 11 % of the other are edges and a label below a disc; 2 pixels aside makes 16 % and 29 %.
            const double coasts = drawn.differenceOfCoasts(seen);
            const double discs = drawn.differenceOfDiscs(seen);
            QVERIFY2(coasts < 0.1 && discs < 0.15, qPrintable(u"%1 %2 %3"_s.arg(isSelected).arg(coasts).arg(discs)));
            QCOMPARE(faultsOfItems(map.shown.window()), QStringList());
        }
    }

    void tapsMoveTheCalloutAndLeaveTheView()
    {
        MapSection map;
        QVERIFY(map.open());
        const MapCamera before = map.camera();
        map.click(map.at(28.6, -17.9));
        const QQuickItem *callout = map.shown.named("W FRONTERA.IHI");
        QStringList texts;
        for (const QQuickItem *text : map.shown.itemsOf("QQuickText"))
            if (callout->isAncestorOf(text))
                texts.append(text->property("text").toString());
        QCOMPARE(texts.join(u'|'),
                 u"W FRONTERA.IHI|Nov 22, 2026, 6:00\u202FPM UTC|38 km|Depth|4.1|Magnitude|mbLg|Type|Ver detalle"_s);
        // Beside all markers.
        map.click(map.at(31, -19));
        QVERIFY(map.hasCallout());
        map.click(map.at(27.6, -17.9));
        QVERIFY(map.hasCallout());
        QCOMPARE(map.layer()->markers()->selected()->eventID(), u"3"_s);
        QVERIFY(map.camera() == before);
        map.shown.click(map.shown.named("Cerrar"));
        map.move(1s);
        QVERIFY(!map.hasCallout());
        QVERIFY2(map.layer()->raised()->rowCount() == 1, "what was selected has shrunk and is one of many again");
    }

    void theKeyboardWalksFromEventToEvent()
    {
        MapSection map;
        QVERIFY(map.open());
        QQuickItem *surface = map.shown.item("map");
        surface->forceActiveFocus(Qt::TabFocusReason);
        const auto spoken = [&] { return surface->property("name").toString(); };
        QCOMPARE(spoken(), u"Mapa"_s);
        map.press(Qt::Key_Left, Qt::AltModifier);
        map.press(Qt::Key_Left, Qt::AltModifier);
        QVERIFY2(spoken().startsWith(u"Magnitud 4.1, W FRONTERA.IHI, Nov 22, 2026, "_s), qPrintable(spoken()));
        map.press(Qt::Key_Down, Qt::AltModifier);
        QVERIFY2(spoken().startsWith(u"Magnitud 6.2"_s), qPrintable(spoken()));
        map.press(Qt::Key_Return);
        QVERIFY(map.hasCallout());
        map.press(Qt::Key_Escape);
        QVERIFY(!map.hasCallout());
        map.click(map.at(28.6, -17.9));
        QVERIFY2(spoken().startsWith(u"Magnitud 4.1"_s), qPrintable(spoken()));
        map.press(Qt::Key_Return);
        QVERIFY(!map.hasCallout());
        // From the callout Escape goes back to the map.
        map.press(Qt::Key_Return);
        map.shown.named("Cerrar")->forceActiveFocus(Qt::TabFocusReason);
        QVERIFY(!surface->hasActiveFocus());
        map.press(Qt::Key_Escape);
        QVERIFY(!map.hasCallout());
        QVERIFY(surface->hasActiveFocus());
    }

    void gesturesAndButtonsMoveTheMap()
    {
        MapSection map;
        QVERIFY(map.open());
        const MapCamera before = map.camera();
        map.shown.click(map.shown.named("Acercar"));
        QVERIFY(map.zoomsTo(before.scale() * 2));
        map.shown.click(map.shown.named("Alejar"));
        map.shown.click(map.shown.named("Alejar"));
        QVERIFY(map.zoomsTo(before.scale() / 2));
        QVERIFY(QLineF(map.camera().center(), before.center()).length() < 0.5);
        const QPoint from = map.at(31, -19);
        map.shown.drag(from, {100, 40});
        QVERIFY(map.camera().center().x() < before.center().x() - 1);
        QTest::mouseDClick(&map.shown.window(), Qt::LeftButton, Qt::NoModifier, from);
        QVERIFY(map.zoomsTo(before.scale()));
        QVERIFY(map.becomesSharp());
    }

    void popoverFiltersTheMapAndStaysOpen()
    {
        MapSection map;
        QVERIFY(map.open());
        map.shown.click(map.shown.item("filterButton"));
        const auto chosen = [&](const char *choice) {
            map.shown.click(map.shown.named(choice));
            map.move(1s);
            const QString icon = map.shown.item("filterButton")->property("iconName").toString();
            return u"%1 %2%3"_s.arg(map.layer()->markers()->earthquakes().size())
                .arg(icon.section(u'.', 4), map.shown.item("filterPopover") ? QString() : u" closed"_s);
        };
        QCOMPARE(chosen("Strong"), u"1 circle.fill"_s);
        QCOMPARE(chosen("Last hour"), u"0 circle.fill"_s);
        QCOMPARE(chosen("Reset Filters"), u"3 circle"_s);
        map.press(Qt::Key_Escape);
        QVERIFY(!map.shown.item("filterPopover"));
        // A spinner shows for as long as the refresh of a return runs.
        map.press(Qt::Key_2, Qt::ControlModifier);
        map.shown.world.urlSession.holdsAnswers = true;
        map.press(Qt::Key_3, Qt::ControlModifier);
        QVERIFY(map.shown.named("Cargando terremotos…"));
        map.shown.world.urlSession.release();
        map.shown.settle();
        QVERIFY(!map.shown.named("Cargando terremotos…"));
    }

    /// Half of the growth is reached after 0.3425 of the time: at a half of the curve's own parameter.
    void ringsGrowAndFadeOneAfterAnother()
    {
        MapSection map;
        QVERIFY(map.open());
        auto now = 0ms;
        for (const auto &[ring, time, growth, opacity] : {std::tuple(0, 685ms, 2.1, 0.5),
                                                          {1, 1335ms, 2.1, 0.5},
                                                          {2, 1985ms, 2.1, 0.5},
                                                          {0, 1999ms, 3.2, 0.0},
                                                          {0, 2685ms, 2.1, 0.5}}) {
            map.move(time - now);
            now = time;
            const QQuickItem *circle = map.shown.items("ripple")[ring]->childItems().first();
            QCOMPARE(numbers({circle->property("diameter").toDouble() * circle->scale() / 28, circle->opacity()}),
                     numbers({growth, opacity}));
        }
    }

    /// The springs are at 0.86 of their way after 0.29375 of their time, at a half of the curve's own parameter.
    void selectionSpringsAndTheCalloutSlides()
    {
        MapSection map;
        QVERIFY(map.open());
        // How much of their way the marker's scale and size and the callout's opacity and place have gone.
        const auto ways = [&](std::chrono::milliseconds time) {
            map.move(time);
            const QQuickItem *ring = map.shown.item("ripple");
            const QQuickItem *callout = map.shown.named("W FRONTERA.IHI");
            if (!callout)
                return u"no callout"_s;
            return numbers({(ring->parentItem()->scale() - 1) / 0.2, (ring->property("baseSize").toDouble() - 28) / 8,
                            callout->opacity(),
                            (callout->parentItem()->height() - callout->y()) / (callout->height() + 16)});
        };
        QTest::mouseClick(&map.shown.window(), Qt::LeftButton, Qt::NoModifier, map.at(29.4, -12.9));
        map.shown.settle();
        QVERIFY(ways(59ms).startsWith(u"0.85"_s));
        QCOMPARE(ways(14ms).section(u' ', 1), u"0.85 0.85 0.85"_s);
        QCOMPARE(ways(200ms), u"1.00 1.00 1.00 1.00"_s);
        map.shown.click(map.shown.named("Cerrar"));
        QCOMPARE(ways(175ms).section(u' ', 2), u"0.50 0.50"_s);
    }

    /// Endless motion that nobody sees would cost as much as if somebody did.
    void onlyTheLatestMarkerRipplesAndOnlyInSight()
    {
        MapSection map;
        QVERIFY(map.open());
        const auto moving = [&] {
            return std::ranges::count_if(map.shown.items("ripple"),
                                         [](QQuickItem *ring) { return ring->property("isMoving").toBool(); });
        };
        QCOMPARE(moving(), 3);
        for (const auto unseen : {QWindow::Hidden, QWindow::Minimized}) {
            map.shown.window().setVisibility(unseen);
            QCOMPARE(moving(), 0);
        }
        map.shown.window().showNormal();
        QCOMPARE(moving(), 3);
        map.shown.settle();
        map.shown.world.appearance.setReducedMotion(true);
        map.shown.settle();
        QCOMPARE(moving(), 0);
        map.layer()->markers()->setEarthquakes({});
        map.shown.settle();
        QCOMPARE(map.shown.items("ripple").size(), 0);
    }
};

QTEST_MAIN(MapViewTest)
#include "MapViewTest.moc"

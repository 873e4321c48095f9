// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapController.h"
#include "Platform/Map/MapGraticule.h"
#include "Platform/Text/Localization.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QAbstractItemModelTester>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
constexpr CoordinateRegion islands{{28.3, -15.8}, {8.0, 10.0}};

class Hand
{
public:
    Hand()
    {
        controller.setRegion(islands);
        controller.setSize({1100, 720});
    }

    /// Drags 100 pixels to the right at 1000 pixels a second.
    void dragFast()
    {
        controller.grab();
        for (int step = 0; step < 10; ++step) {
            world.clock.advance(10ms);
            controller.drag(10, 0);
        }
    }

    double scale() const { return controller.camera().scale(); }
    CoordinateSpan span() const { return controller.camera().region().span; }
    /// Where in the window the place is that was in its middle.
    double x() const { return controller.camera().toScreen({-15.8, 0}).x(); }

    World world;
    MapController controller;
};

bool near(double a, double b, double tolerance = 1e-6)
{
    return std::abs(a - b) <= tolerance;
}

bool near(const QPointF &a, const QPointF &b)
{
    return near(a.x(), b.x()) && near(a.y(), b.y());
}
}

class MapControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// As a whole, so that one of its sides fills what is not covered.
    void theRegionShowsAtEverySizeUntilTheUserMovesTheMap()
    {
        Hand hand;
        QVERIFY(near(hand.span().latitudeDelta, 8) && hand.span().longitudeDelta > 10);
        hand.controller.setTopCover(120);
        const auto onScreen = [&](double latitude) {
            return hand.controller.camera().toScreen(WebMercator::toWorld(Coordinate{latitude, -15.8}));
        };
        QVERIFY(near(onScreen(32.3), {550, 120}) && near(onScreen(24.3), {550, 720}));
        hand.controller.setSize({480, 720});
        QVERIFY(near(hand.span().longitudeDelta, 10) && hand.span().latitudeDelta > 8);
        hand.controller.zoomIn();
        hand.controller.advance(10);
        const double scale = hand.scale();
        hand.controller.setSize({1100, 720});
        hand.controller.setRegion({{10, 10}, {1, 1}});
        QCOMPARE(hand.scale(), scale);
        QVERIFY(near(hand.x(), 550));
    }

    void zoomEndsAtTheLimitsAndTheMapsEdgeStaysOutOfSight()
    {
        Hand hand;
        hand.controller.setStill(true);
        hand.controller.turnWheel(4800, 550, 360);
        QVERIFY(near(hand.span().longitudeDelta, 0.02));
        hand.controller.turnWheel(-9600, 0, 0);
        QVERIFY(near(hand.span().longitudeDelta, 40));
        for (const double factor : {0.0, std::nan("")}) {
            hand.controller.grab();
            hand.controller.pinch(factor, 0, 0);
            QVERIFY(near(hand.span().longitudeDelta, 40));
        }
        // A tall narrow window would look over the edge before it is 40 degrees wide.
        hand.controller.setSize({300, 1200});
        hand.controller.turnWheel(-4800, 150, 600);
        QVERIFY(near(hand.span().latitudeDelta, 28.3));
        hand.controller.drag(1e6, 1e6);
        QVERIFY(near(hand.controller.camera().visibleWorld().left(), -35.9));
        hand.controller.drag(-2e6, -2e6);
        QVERIFY(near(hand.controller.camera().visibleWorld().right(), 5.9));
    }

    /// 1000 px/s slow down over a way of 250 px, of which 33 % are behind after a tenth of a second.
    void aFastDragRunsOutGentlyUntilTheMapIsGrabbed()
    {
        Hand hand;
        hand.dragFast();
        QVERIFY(near(hand.x(), 650, 0.1));
        hand.controller.release();
        hand.controller.advance(0.1);
        QVERIFY2(near(hand.x() - 650, 82.4, 0.5), qPrintable(QString::number(hand.x())));
        hand.controller.advance(10);
        QVERIFY2(near(hand.x() - 650, 249.5, 1), qPrintable(QString::number(hand.x())));
        QVERIFY(!hand.controller.isRunning());
        hand.dragFast();
        hand.controller.release();
        hand.controller.grab();
        const double x = hand.x();
        hand.controller.advance(1);
        QCOMPARE(hand.x(), x);
    }

    void aHandThatRestedThrowsNothing_data()
    {
        const Table<int, bool, bool> row;
        row("let go at once", 0, false, true);
        row("held still first", 200, false, false);
        row("less motion wanted", 0, true, false);
    }

    void aHandThatRestedThrowsNothing()
    {
        const auto [restMilliseconds, isStill, isThrown] = Table<int, bool, bool>::current();
        Hand hand;
        hand.controller.setStill(isStill);
        hand.dragFast();
        hand.world.clock.advance(std::chrono::milliseconds(restMilliseconds));
        hand.controller.release();
        QCOMPARE(hand.controller.isRunning(), isThrown);
    }

    /// Two notches double the scale, at once or after some frames, about the pointer.
    void theWheelZoomsAboutThePointer()
    {
        for (const bool isStill : {false, true}) {
            Hand hand;
            hand.controller.setStill(isStill);
            const double scale = hand.scale();
            const QPointF held = hand.controller.camera().toWorld({800, 200});
            hand.controller.turnWheel(120, 800, 200);
            hand.controller.turnWheel(120, 800, 200);
            QCOMPARE(hand.controller.isRunning(), !isStill);
            for (int frame = 0; frame < 100; ++frame)
                hand.controller.advance(0.016);
            QVERIFY(!hand.controller.isRunning());
            QVERIFY(near(hand.scale() / scale, 2));
            QVERIFY(near(hand.controller.camera().toScreen(held), {800, 200}));
        }
    }

    void aPinchFollowsTheFingers()
    {
        Hand hand;
        const double scale = hand.scale();
        hand.controller.grab();
        hand.controller.pinch(1.5, 300, 300);
        hand.controller.pinch(3, 300, 300);
        QVERIFY(near(hand.scale() / scale, 3));
        hand.controller.grab();
        hand.controller.pinch(0.5, 300, 300);
        QVERIFY(near(hand.scale() / scale, 1.5));
    }

    void keysMoveTheMap_data()
    {
        const Table<int, int, QString> row;
        row("plus", Qt::Key_Plus, Qt::ShiftModifier, "2 0 0");
        row("minus of the pad", Qt::Key_Minus, Qt::KeypadModifier, "0.5 0 0");
        row("left", Qt::Key_Left, Qt::NoModifier, "1 220 0");
        row("down", Qt::Key_Down, Qt::NoModifier, "1 0 -144");
        row("Alt is for something else", Qt::Key_Left, Qt::AltModifier, "refused");
        row("a letter", Qt::Key_A, Qt::NoModifier, "refused");
    }

    void keysMoveTheMap()
    {
        const auto [key, modifiers, expected] = Table<int, int, QString>::current();
        Hand hand;
        hand.controller.setStill(true);
        const MapCamera before = hand.controller.camera();
        QString effect = u"refused"_s;
        if (hand.controller.pressKey(key, modifiers)) {
            const QPoint way = (hand.controller.camera().toScreen(before.center()) - QPointF(550, 360)).toPoint();
            effect = u"%1 %2 %3"_s.arg(hand.scale() / before.scale()).arg(way.x()).arg(way.y());
        }
        QCOMPARE(effect, expected);
        hand.controller.pressKey(Qt::Key_0, 0);
        QVERIFY2(hand.controller.camera() == before, "zero goes back to the region");
    }

    void theScaleBarIsARoundLength_data()
    {
        const Table<double, QString, double> row;
        row("archipelago", 13.9, "100 km", 100'000);
        row("island", 0.6, "5 km", 5'000);
        row("closest", 0.02, "200 m", 200);
    }

    void theScaleBarIsARoundLength()
    {
        const auto [degreesAcross, text, meters] = Table<double, QString, double>::current();
        Hand hand;
        hand.controller.setRegion({{28.3, -15.8}, {0.0001, degreesAcross}});
        QCOMPARE(hand.controller.scaleBarText(), text);
        // Measured on the Earth: 98,050 m for a degree of longitude at 28.3 degrees north.
        QVERIFY(near(hand.controller.scaleBarWidth() / hand.scale() * 98050 / meters, 1, 0.02));
    }

    void theMapMovesNoFurtherThanItMustToShowAPlace()
    {
        Hand hand;
        const MapCamera before = hand.controller.camera();
        hand.controller.reveal(before.toWorld({500, 300}), {0, 52, 0, 200}, 40);
        QVERIFY(hand.controller.camera() == before);
        const QPointF hidden = before.toWorld({1090, 600});
        hand.controller.reveal(hidden, {0, 52, 0, 200}, 40);
        QVERIFY(near(hand.controller.camera().toScreen(hidden), {1060, 480}));
    }

    void figuresStandWhereTheLinesMeetTheEdges()
    {
        Hand hand;
        MapGraticule graticule;
        const QAbstractItemModelTester tester(&graticule, QAbstractItemModelTester::FailureReportingMode::Fatal);
        graticule.setController(&hand.controller);
        QStringList texts;
        for (int row = 0; row < graticule.rowCount(); ++row)
            texts.append(graticule.index(row).data(MapGraticule::textRole).toString());
        QCOMPARE(texts.join(u' '), u"22°O 20°O 18°O 16°O 14°O 12°O 10°O 26°N 28°N 30°N 32°N"_s);
        QVERIFY(near(graticule.index(3).data(MapGraticule::offsetRole).toDouble(), 550 - 0.2 * hand.scale()));
        hand.controller.setStill(true);
        hand.controller.turnWheel(2400, 550, 360);
        QCOMPARE(graticule.index(0).data(MapGraticule::textRole).toString(), u"15,810°O"_s);
        setTranslationTable(R"({"map.decimalSeparator": ".", "map.west": "W"})");
        QCOMPARE(graticule.index(0).data(MapGraticule::textRole).toString(), u"15.810°W"_s);
        setTranslationTable({});
    }
};

QTEST_GUILESS_MAIN(MapControllerTest)
#include "MapControllerTest.moc"

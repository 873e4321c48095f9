// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Map/MapController.h"
#include "Platform/Map/MapGraticule.h"
#include "Support/World.h"

#include <QAbstractItemModelTester>
#include <QTest>

#include <cmath>

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

    double x() const { return controller.camera().toScreen(start).x(); }

    World world;
    MapController controller;
    QPointF start{-15.8, -29.6};
};

bool near(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance;
}
}

class MapControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRegionShowsAtEverySizeUntilTheUserMovesTheMap()
    {
        Hand hand;
        hand.controller.setSize({480, 720});
        QVERIFY(near(hand.controller.camera().region().span.longitudeDelta, 10, 1e-6));
        hand.controller.zoomIn();
        hand.controller.advance(10);
        const double scale = hand.controller.camera().scale();
        hand.controller.setSize({1100, 720});
        hand.controller.setRegion({{10, 10}, {1, 1}});
        QCOMPARE(hand.controller.camera().scale(), scale);
    }

    void aFastDragRunsOutGently()
    {
        Hand hand;
        hand.dragFast();
        QVERIFY(near(hand.x(), 650, 0.1));
        hand.controller.release();
        QVERIFY(hand.controller.isRunning());
        hand.controller.advance(0.1);
        const double soon = hand.x() - 650;
        QVERIFY2(soon > 50 && soon < 110, qPrintable(QString::number(soon)));
        hand.controller.advance(10);
        QVERIFY(hand.x() - 650 < 260);
        QVERIFY(!hand.controller.isRunning());
    }

    void aHandThatRestedThrowsNothing_data()
    {
        QTest::addColumn<int>("restMilliseconds");
        QTest::addColumn<bool>("isStill");
        QTest::addColumn<bool>("isThrown");
        QTest::newRow("let go at once") << 0 << false << true;
        QTest::newRow("held still first") << 200 << false << false;
        QTest::newRow("less motion wanted") << 0 << true << false;
    }

    void aHandThatRestedThrowsNothing()
    {
        QFETCH(int, restMilliseconds);
        QFETCH(bool, isStill);
        Hand hand;
        hand.controller.setStill(isStill);
        hand.dragFast();
        hand.world.clock.advance(std::chrono::milliseconds(restMilliseconds));
        hand.controller.release();
        QTEST(hand.controller.isRunning(), "isThrown");
    }

    void grabbingStopsWhatRuns()
    {
        Hand hand;
        hand.dragFast();
        hand.controller.release();
        hand.controller.grab();
        const double x = hand.x();
        hand.controller.advance(1);
        QCOMPARE(hand.x(), x);
    }

    /// Two notches double the scale, at once or after some frames, about the pointer.
    void theWheelZoomsAboutThePointer_data()
    {
        QTest::addColumn<bool>("isStill");
        QTest::newRow("running") << false;
        QTest::newRow("still") << true;
    }

    void theWheelZoomsAboutThePointer()
    {
        QFETCH(bool, isStill);
        Hand hand;
        hand.controller.setStill(isStill);
        const double scale = hand.controller.camera().scale();
        const QPointF held = hand.controller.camera().toWorld({800, 200});
        hand.controller.turnWheel(120, 800, 200);
        hand.controller.turnWheel(120, 800, 200);
        for (int frame = 0; frame < 100; ++frame)
            hand.controller.advance(0.016);
        QVERIFY(!hand.controller.isRunning());
        QVERIFY(near(hand.controller.camera().scale() / scale, 2, 1e-9));
        const QPointF now = hand.controller.camera().toScreen(held);
        QVERIFY(near(now.x(), 800, 1e-6) && near(now.y(), 200, 1e-6));
    }

    void aPinchFollowsTheFingers()
    {
        Hand hand;
        const double scale = hand.controller.camera().scale();
        hand.controller.grab();
        hand.controller.pinch(1.5, 300, 300);
        hand.controller.pinch(3, 300, 300);
        QVERIFY(near(hand.controller.camera().scale() / scale, 3, 1e-9));
        hand.controller.grab();
        hand.controller.pinch(0.5, 300, 300);
        QVERIFY(near(hand.controller.camera().scale() / scale, 1.5, 1e-9));
    }

    void keysMoveTheMap_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("effect");
        const auto row = [](const char *name, Qt::Key key, Qt::KeyboardModifiers modifiers, const char *effect) {
            QTest::newRow(name) << int(key) << int(modifiers) << QString::fromLatin1(effect);
        };
        row("plus", Qt::Key_Plus, Qt::ShiftModifier, "2 0 0");
        row("minus of the pad", Qt::Key_Minus, Qt::KeypadModifier, "0.5 0 0");
        row("left", Qt::Key_Left, Qt::NoModifier, "1 220 0");
        row("down", Qt::Key_Down, Qt::NoModifier, "1 0 -144");
        row("Alt is for something else", Qt::Key_Left, Qt::AltModifier, "refused");
        row("a letter", Qt::Key_A, Qt::NoModifier, "refused");
    }

    void keysMoveTheMap()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        Hand hand;
        hand.controller.setStill(true);
        const MapCamera before = hand.controller.camera();
        QString effect = QStringLiteral("refused");
        if (hand.controller.pressKey(key, modifiers)) {
            const MapCamera &after = hand.controller.camera();
            const QPointF way = after.toScreen(before.center()) - before.toScreen(before.center());
            effect = QStringLiteral("%1 %2 %3")
                         .arg(after.scale() / before.scale())
                         .arg(std::round(way.x()))
                         .arg(std::round(way.y()));
        }
        QTEST(effect, "effect");
    }

    void zeroGoesBackToTheRegion()
    {
        Hand hand;
        const MapCamera before = hand.controller.camera();
        hand.dragFast();
        hand.controller.pressKey(Qt::Key_0, 0);
        QVERIFY(hand.controller.camera() == before);
    }

    void theScaleBarIsARoundLength_data()
    {
        QTest::addColumn<double>("degreesAcross");
        QTest::addColumn<QString>("text");
        QTest::newRow("archipelago") << 13.9 << QStringLiteral("100 km");
        QTest::newRow("island") << 1.2 << QStringLiteral("10 km");
        QTest::newRow("closest") << 0.02 << QStringLiteral("200 m");
    }

    void theScaleBarIsARoundLength()
    {
        QFETCH(double, degreesAcross);
        Hand hand;
        hand.controller.setRegion({{28.3, -15.8}, {0.0001, degreesAcross}});
        QTEST(hand.controller.scaleBarText(), "text");
        QVERIFY(hand.controller.scaleBarWidth() <= 150);
        // Measured on the Earth: 98,050 m for a degree of longitude at 28.3 degrees north.
        const double meters = hand.controller.scaleBarText().section(u' ', 0, 0).toDouble()
            * (hand.controller.scaleBarText().endsWith(QLatin1String("km")) ? 1000 : 1);
        QVERIFY(near(hand.controller.scaleBarWidth() / hand.controller.camera().scale() * 98050 / meters, 1, 0.02));
    }

    void theMapMovesNoFurtherThanItMustToShowAPlace()
    {
        Hand hand;
        const MapCamera before = hand.controller.camera();
        hand.controller.reveal(before.toWorld({500, 300}), {0, 52, 0, 200}, 40);
        QVERIFY(hand.controller.camera() == before);
        const QPointF hidden = before.toWorld({1090, 600});
        hand.controller.reveal(hidden, {0, 52, 0, 200}, 40);
        const QPointF now = hand.controller.camera().toScreen(hidden);
        QVERIFY(near(now.x(), 1060, 1e-6) && near(now.y(), 480, 1e-6));
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
        QCOMPARE(texts.join(u' '), QStringLiteral("22°O 20°O 18°O 16°O 14°O 12°O 10°O 26°N 28°N 30°N 32°N"));
        const double x = graticule.index(3).data(MapGraticule::offsetRole).toDouble();
        QVERIFY(near(x, 550 - 0.2 * hand.controller.camera().scale(), 1e-6));
        hand.controller.setStill(true);
        hand.controller.turnWheel(2400, 550, 360);
        QCOMPARE(graticule.index(0).data(MapGraticule::textRole).toString(), QStringLiteral("15,810°O"));
    }
};

QTEST_GUILESS_MAIN(MapControllerTest)
#include "MapControllerTest.moc"

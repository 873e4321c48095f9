// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/ModelContext.h"
#include "Support/ShownWindow.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"
#include "iOS/Shared/Detail/EarthquakeDetailScreen.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// The window with one stored event, and its detail screen.
struct Scene : ShownWindow
{
    explicit Scene(const QString &location = u"X"_s, const std::optional<QString> &intensity = {})
    {
        container.mainContext().insert(
            Earthquake(u"e1"_s, world.clock.now() - 1h, 27.7, -18.0, 12.0, 3.1, u"mbLg"_s, intensity, location));
        container.mainContext().save();
    }

    bool isOpen() const { return map() != nullptr; }

    /// Opens the detail in a window that is lower than it.
    bool open()
    {
        if (!show({480, 480}))
            return false;
        click(item("row 0"));
        return QTest::qWaitFor([this] { return isOpen() && isAtRest(); });
    }

    /// No page is on its way in or out.
    bool isAtRest() const { return !itemsOf("QQuickStackView").constFirst()->property("busy").toBool(); }

    QQuickItem *map() const { return item("detailMap"); }
    const MapCamera &camera() const { return map()->property("controller").value<MapController *>()->camera(); }
    double top() const { return map()->mapToScene({0, 0}).y(); }

    void turnWheelOverMap(Qt::KeyboardModifiers modifiers, int angle = -120)
    {
        const QPointF place = map()->mapToScene({200, 100});
        QWheelEvent event(place, window().mapToGlobal(place), {}, {0, angle}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&window(), &event);
        settle();
    }
};
}

class EarthquakeDetailViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsSayWhatIsStored_data()
    {
        Table<QByteArray, double, double, double, double, QString> row;
        row("north west, in Spanish", "es_ES.UTF-8", 28.12346, -16.5, 12.0, 1.6,
            "28.1235°, -16.5000°|12 km|1.6 mbLg|M 1.6 — X|1 ago 2025, 14:04:05 UTC");
        row("south east, in American", "en_US.UTF-8", -3.00004, 16.25, 11.5, 2.25,
            "-3.0000°, 16.2500°|12 km|2.2 mbLg|M 2.2 — X|Aug 1, 2025, 2:04:05\u202FPM UTC");
        row("zero", "es_ES.UTF-8", 0.0, 0.0, 0.4, -0.5,
            "0.0000°, 0.0000°|0 km|-0.5 mbLg|M -0.5 — X|1 ago 2025, 14:04:05 UTC");
        row("above the sea", "es_ES.UTF-8", 28.0, -17.0, -1.6, 5.96,
            "28.0000°, -17.0000°|-2 km|6.0 mbLg|M 6.0 — X|1 ago 2025, 14:04:05 UTC");
    }

    void rowsSayWhatIsStored()
    {
        const auto [locale, latitude, longitude, depth, magnitude, texts] =
            Table<QByteArray, double, double, double, double, QString>::current();
        const UserEnvironment environment(locale, "Atlantic/Canary");
        World world;
        EarthquakeDetailScreen screen;
        const Earthquake event(u"e"_s, instant("2025-08-01T14:04:05Z"), latitude, longitude, depth, magnitude,
                               u"mbLg"_s, std::nullopt, u"X"_s);
        screen.setProperty("event", QVariant::fromValue(EarthquakeReference{event}));
        screen.componentComplete();
        QCOMPARE(QStringList({screen.epicenterText(), screen.depthText(), screen.magnitudeText(), screen.title(),
                              screen.dateText()})
                     .join(u'|'),
                 texts);
        QVERIFY(screen.region() == (CoordinateRegion{{latitude, longitude}, {0.3, 0.3}}));
    }

    void opensFromTheListAndComesBackByKeys()
    {
        Scene shown(u"<b>W</b> FRONTERA"_s);
        QVERIFY(shown.show());
        shown.item("earthquakeList")->forceActiveFocus(Qt::TabFocusReason);
        shown.press(Qt::Key_Down);
        for (const auto &[key, modifier] :
             {std::pair(Qt::Key_Escape, Qt::NoModifier), {Qt::Key_Left, Qt::AltModifier}}) {
            shown.press(Qt::Key_Return);
            QTRY_VERIFY(shown.isOpen());
            QVERIFY(shown.named("M 3.1 — <b>W</b> FRONTERA"));
            QVERIFY(shown.named("Date and time"));
            QVERIFY(!shown.named("Maximum intensity"));
            QCOMPARE(faultsOfItems(shown.window()), QStringList());
            shown.press(key, modifier);
            QTRY_VERIFY(!shown.isOpen());
            QCOMPARE(shown.item("earthquakeList")->property("currentIndex").toInt(), 0);
        }
    }

    void backButtonOfTheMouseReturns()
    {
        for (const auto &[section, under, place] : {std::tuple(Qt::Key_1, "detailMap", QPointF(20, 100)),
                                                    {Qt::Key_2, "value", QPointF(10, 10)},
                                                    {Qt::Key_2, "page", QPointF(20, 640)}}) {
            Scene shown;
            QVERIFY(shown.show());
            shown.press(section, Qt::ControlModifier);
            QTRY_VERIFY(shown.item("row 0"));
            shown.click(shown.item("row 0"));
            // The page may still be on its way in.
            QTRY_VERIFY(shown.isOpen());
            QTest::mouseClick(&shown.window(), Qt::BackButton, Qt::NoModifier,
                              shown.item(under)->mapToScene(place).toPoint());
            QTRY_VERIFY2(!shown.isOpen(), under);
            QVERIFY(shown.item("row 0")->isEnabled());
        }
    }

    void dragOnTheListOpensNothing()
    {
        Scene shown;
        QVERIFY(shown.show());
        shown.drag(shown.item("row 0")->mapToScene({200, 20}).toPoint(), {0, 80});
        QVERIFY(!shown.isOpen());
    }

    void pageAndMapShareWheelAndDrag()
    {
        Scene shown(u"X"_s, u"IV"_s);
        QVERIFY(shown.open());
        QVERIFY(shown.named("Maximum intensity"));
        QVERIFY(shown.named("IV"));
        const double scale = shown.camera().scale();
        const double top = shown.top();
        shown.turnWheelOverMap(Qt::NoModifier);
        QCOMPARE(shown.camera().scale(), scale);
        QVERIFY(shown.top() < top);
        QTRY_VERIFY(!shown.itemsOf("QQuickFlickable").constFirst()->property("moving").toBool());
        const double scrolled = shown.top();
        shown.turnWheelOverMap(Qt::ControlModifier);
        QTRY_VERIFY(shown.camera().scale() < scale);
        // Without a key it moves the map that was clicked into.
        shown.click(shown.map());
        const double zoomedOut = shown.camera().scale();
        shown.turnWheelOverMap(Qt::NoModifier, 120);
        QTRY_VERIFY(shown.camera().scale() > zoomedOut);
        // A press holds it still.
        shown.click(shown.map());
        const QPointF center = shown.camera().center();
        shown.drag(shown.map()->mapToScene({200, 200}).toPoint(), {0, -80});
        QVERIFY(shown.camera().center() != center);
        QCOMPARE(shown.top(), scrolled);
    }

    void valuesAreCopiedByTheKeyboardAndByThePointer()
    {
        Scene shown(u"<b>W</b> FRONTERA"_s);
        QVERIFY(shown.open());
        QQuickItem *place = shown.items("value").constLast();
        QVERIFY(place->mapToScene({0, 0}).y() > 480);
        for (int tabs = 0; tabs < 12 && !place->hasActiveFocus(); ++tabs)
            shown.press(Qt::Key_Tab);
        // What the keyboard reaches is shown.
        QVERIFY(place->hasActiveFocus());
        QVERIFY(place->mapToScene({0, place->height()}).y() <= 480);
        shown.press(Qt::Key_A, Qt::ControlModifier);
        shown.press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"<b>W</b> FRONTERA"_s);

        shown.drag(shown.items("value").at(1)->mapToScene({0, 10}).toPoint(), {300, 10});
        shown.press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"27.7000°, -18.0000°"_s);
    }
};

QTEST_MAIN(EarthquakeDetailViewTest)
#include "EarthquakeDetailViewTest.moc"

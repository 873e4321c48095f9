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

using namespace std::chrono_literals;

namespace {
/// The window with one stored event, and its detail screen.
struct Scene : ShownWindow
{
    explicit Scene(const QString &location = QStringLiteral("X"), const std::optional<QString> &intensity = {})
    {
        container.mainContext().insert(Earthquake(QStringLiteral("e1"), world.clock.now() - 1h, 27.7, -18.0, 12.0, 3.1,
                                                  QStringLiteral("mbLg"), intensity, location));
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

    void turnWheelOverMap(Qt::KeyboardModifiers modifiers)
    {
        const QPointF place = map()->mapToScene({200, 100});
        QWheelEvent event(place, window().mapToGlobal(place), {}, {0, -120}, Qt::NoButton, modifiers, Qt::NoScrollPhase,
                          false);
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
        Table<double, double, double, double, QString> row;
        row("north west", 28.12346, -16.5, 12.0, 1.6, "28.1235°, -16.5000°|12 km|1.6 mbLg|M 1.6 — X");
        row("south east", -3.00004, 16.25, 11.5, 2.25, "-3.0000°, 16.2500°|12 km|2.2 mbLg|M 2.2 — X");
        row("zero", 0.0, 0.0, 0.4, -0.5, "0.0000°, 0.0000°|0 km|-0.5 mbLg|M -0.5 — X");
        row("above the sea", 28.0, -17.0, -1.6, 5.96, "28.0000°, -17.0000°|-2 km|6.0 mbLg|M 6.0 — X");
    }

    void rowsSayWhatIsStored()
    {
        const auto [latitude, longitude, depth, magnitude, texts] =
            Table<double, double, double, double, QString>::current();
        World world;
        EarthquakeDetailScreen screen;
        complete(screen,
                 Earthquake(QStringLiteral("e"), world.clock.now(), latitude, longitude, depth, magnitude,
                            QStringLiteral("mbLg"), std::nullopt, QStringLiteral("X")));
        QCOMPARE(QStringList({screen.epicenterText(), screen.depthText(), screen.magnitudeText(), screen.title()})
                     .join(u'|'),
                 texts);
        QVERIFY(!screen.hasMaxIntensity());
        QVERIFY(screen.region() == (CoordinateRegion{{latitude, longitude}, {0.3, 0.3}}));
    }

    void timeIsUniversalInTheUsersForm_data()
    {
        Table<QByteArray, QString> row;
        row("Spanish", "es_ES.UTF-8", "1 ago 2025, 14:04:05 UTC");
        row("American", "en_US.UTF-8", "Aug 1, 2025, 2:04:05\u202FPM UTC");
    }

    void timeIsUniversalInTheUsersForm()
    {
        const auto [locale, text] = Table<QByteArray, QString>::current();
        const UserEnvironment environment(locale, "Atlantic/Canary");
        World world;
        EarthquakeDetailScreen screen;
        complete(screen,
                 Earthquake(QStringLiteral("e"), instant("2025-08-01T14:04:05Z"), 28, -16, 1, 1, QStringLiteral("mbLg"),
                            QStringLiteral("III-IV"), QString()));
        QCOMPARE(screen.dateText(), text);
        QCOMPARE(screen.maxIntensity(), QStringLiteral("III-IV"));
    }

    void opensFromTheListAndComesBack_data()
    {
        Table<Qt::Key, Qt::KeyboardModifiers> row;
        row("Escape", Qt::Key_Escape, Qt::NoModifier);
        row("Alt and left", Qt::Key_Left, Qt::AltModifier);
    }

    void opensFromTheListAndComesBack()
    {
        const auto [key, modifiers] = Table<Qt::Key, Qt::KeyboardModifiers>::current();
        Scene shown(QStringLiteral("<b>W</b> FRONTERA"));
        QVERIFY(shown.show());
        QQuickItem *list = shown.item("earthquakeList");
        QVERIFY(list);
        list->forceActiveFocus(Qt::TabFocusReason);
        shown.press(Qt::Key_Down);
        shown.press(Qt::Key_Return);
        QTRY_VERIFY(shown.isOpen());
        QVERIFY(shown.named("M 3.1 — <b>W</b> FRONTERA"));
        QVERIFY(shown.named("Date and time"));
        QVERIFY(!shown.named("Maximum intensity"));
        QCOMPARE(faultsOfItems(shown.window()), QStringList());
        shown.press(key, modifiers);
        QTRY_VERIFY(!shown.isOpen());
        QCOMPARE(shown.item("earthquakeList")->property("currentIndex").toInt(), 0);
    }

    void backButtonOfTheMouseReturns_data()
    {
        Table<Qt::Key, QString, QPointF> row;
        row("to the list", Qt::Key_1, "detailMap", QPointF(20, 100));
        row("to the history", Qt::Key_2, "value", QPointF(10, 10));
        row("to the map and its callout", Qt::Key_3, "page", QPointF(20, 640));
    }

    void backButtonOfTheMouseReturns()
    {
        const auto [section, under, place] = Table<Qt::Key, QString, QPointF>::current();
        Scene shown;
        // The callout is then where it will stay from its first frame on.
        shown.world.appearance.setReducedMotion(section == Qt::Key_3);
        QVERIFY(shown.show());
        shown.press(section, Qt::ControlModifier);
        if (QQuickItem *map = shown.item("map")) {
            map->forceActiveFocus(Qt::TabFocusReason);
            shown.press(Qt::Key_Right, Qt::AltModifier);
            shown.press(Qt::Key_Return);
        }
        const auto opener = [&] {
            QQuickItem *row = shown.item("row 0");
            return row ? row : shown.named("Ver detalle");
        };
        QTRY_VERIFY(opener());
        shown.click(opener());
        // The page may still be on its way in.
        QTRY_VERIFY(shown.isOpen());
        QTest::mouseClick(&shown.window(), Qt::BackButton, Qt::NoModifier,
                          shown.item(under)->mapToScene(place).toPoint());
        QTRY_VERIFY(!shown.isOpen());
        QVERIFY(opener());
        QVERIFY(opener()->isEnabled());
    }

    void dragOnTheListOpensNothing()
    {
        Scene shown;
        QVERIFY(shown.show());
        shown.drag(shown.item("row 0")->mapToScene({200, 20}).toPoint(), {0, 80});
        QVERIFY(!shown.isOpen());
    }

    void keysInAListWithoutRowsAreHarmless()
    {
        Scene shown;
        QVERIFY(shown.show());
        shown.press(Qt::Key_F, Qt::ControlModifier);
        shown.type("zzz");
        shown.pass(300ms);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Down, Qt::Key_Return})
            shown.press(key);
        shown.pass(60s);
        QVERIFY(!shown.isOpen());
    }

    void dragInTheMapLeavesThePage()
    {
        Scene shown(QStringLiteral("X"), QStringLiteral("IV"));
        QVERIFY(shown.open());
        QVERIFY(shown.named("Maximum intensity"));
        QVERIFY(shown.named("IV"));
        const QPointF center = shown.camera().center();
        const double y = shown.top();
        shown.drag(shown.map()->mapToScene({200, 200}).toPoint(), {0, -80});
        QVERIFY(shown.camera().center() != center);
        QCOMPARE(shown.top(), y);
    }

    void wheelOverTheMapMovesThePage()
    {
        Scene shown;
        QVERIFY(shown.open());
        const double scale = shown.camera().scale();
        const double y = shown.top();

        shown.turnWheelOverMap(Qt::NoModifier);
        QCOMPARE(shown.camera().scale(), scale);
        QVERIFY(shown.top() < y);

        QQuickItem *page = shown.map();
        while (page && !page->inherits("QQuickFlickable"))
            page = page->parentItem();
        QVERIFY(page);
        QTRY_VERIFY(!page->property("moving").toBool());
        const double scrolled = shown.top();
        shown.turnWheelOverMap(Qt::ControlModifier);
        QTRY_VERIFY(shown.camera().scale() != scale);
        QCOMPARE(shown.top(), scrolled);
    }

    void wheelMovesTheMapThatWasClickedInto()
    {
        Scene shown;
        QVERIFY(shown.open());
        const double scale = shown.camera().scale();
        const double y = shown.top();
        shown.click(shown.map());
        shown.turnWheelOverMap(Qt::NoModifier);
        QTRY_VERIFY(shown.camera().scale() < scale);
        QCOMPARE(shown.top(), y);
    }

    void valuesAreCopiedByTheKeyboardAndByThePointer()
    {
        Scene shown(QStringLiteral("<b>W</b> FRONTERA"));
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
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("<b>W</b> FRONTERA"));

        shown.drag(shown.items("value").at(1)->mapToScene({0, 10}).toPoint(), {300, 10});
        shown.press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("27.7000°, -18.0000°"));
    }

private:
    static void complete(EarthquakeDetailScreen &screen, const Earthquake &earthquake)
    {
        screen.setProperty("event", QVariant::fromValue(EarthquakeReference{earthquake}));
        screen.componentComplete();
    }
};

QTEST_MAIN(EarthquakeDetailViewTest)
#include "EarthquakeDetailViewTest.moc"

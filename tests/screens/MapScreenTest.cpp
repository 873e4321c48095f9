// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Mapa/MapScreen.h"

#include "Core/Persistence/ModelContext.h"
#include "Support/FakeDataSource.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {
/// A screen over three events: 1 is an hour old and low, 2 a day and moderate, 3 ten days and low.
struct Fixture
{
    World world;
    ModelContainer container{{.isStoredInMemoryOnly = true}};
    EarthquakeRepository repository{container.mainContext(), std::make_unique<FakeDataSource>()};
    MapScreen screen;

    Fixture()
    {
        store(QStringLiteral("1"), 1h, 2.5);
        store(QStringLiteral("2"), 24h, 4.1);
        store(QStringLiteral("3"), 240h, 3.9);
        screen.setProperty("container", QVariant::fromValue(&container));
        screen.setProperty("repository", QVariant::fromValue(&repository));
        screen.componentComplete();
        world.settle();
    }

    void store(const QString &eventID, std::chrono::milliseconds age, double magnitude)
    {
        const Instant date = world.clock.now() - age;
        container.mainContext().insert(testEarthquake(
            eventID, std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count(), magnitude));
        container.mainContext().save();
    }

    QString shown() { return eventIDs(screen.markers()->earthquakes()); }
    const Earthquake &event(size_t index) { return screen.markers()->earthquakes()[index]; }
};
}

class MapScreenTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filtersChooseTheMarkersAndTheLatest_data()
    {
        Table<int, int, QString> row;
        row("everything, however old", int(MagnitudeFilter::all), int(DateFilter::all), "1 2 3");
        row("one category", int(MagnitudeFilter::low), int(DateFilter::all), "1 3");
        row("latest of another one", int(MagnitudeFilter::moderate), int(DateFilter::all), "2");
        row("exactly at the cut-off", int(MagnitudeFilter::all), int(DateFilter::last24h), "1 2");
        row("both", int(MagnitudeFilter::low), int(DateFilter::last7d), "1");
        row("nothing", int(MagnitudeFilter::major), int(DateFilter::all), QString());
    }

    void filtersChooseTheMarkersAndTheLatest()
    {
        const auto [magnitude, date, shown] = Table<int, int, QString>::current();
        Fixture f;
        f.screen.setSelectedFilter(magnitude);
        f.screen.setSelectedDateFilter(date);
        QCOMPARE(f.shown(), shown);
        QCOMPARE(f.screen.hasFilter(), magnitude != 0 || date != 0);
        const auto latest = f.screen.markers()->latest();
        QCOMPARE(latest ? latest->eventID() : QString(), f.shown().section(u' ', 0, 0));
        f.screen.resetFilters();
        QCOMPARE(f.shown(), QStringLiteral("1 2 3"));
    }

    void eventsLeaveTheMapAsTimePasses()
    {
        Fixture f;
        f.screen.setSelectedDateFilter(DateFilter::last24h);
        QCOMPARE(f.shown(), QStringLiteral("1 2"));
        f.world.clock.advance(60s);
        QCOMPARE(f.shown(), QStringLiteral("1"));
    }

    /// Not the minute alone: whatever is drawn anew finds the cut-off where it is by then.
    void everyRedrawMovesTheCutoff_data()
    {
        QTest::addColumn<bool>("byCountdown");
        QTest::newRow("a selection") << false;
        QTest::newRow("a second of the countdown") << true;
    }

    void everyRedrawMovesTheCutoff()
    {
        QFETCH(bool, byCountdown);
        Fixture f;
        f.screen.setSelectedDateFilter(DateFilter::last24h);
        if (byCountdown)
            f.repository.refresh(true);
        f.world.settle();
        QCOMPARE(f.shown(), QStringLiteral("1 2"));
        f.world.clock.advance(1s);
        f.world.settle();
        if (!byCountdown) {
            QCOMPARE(f.shown(), QStringLiteral("1 2"));
            f.screen.toggle(f.event(0));
        }
        QCOMPARE(f.shown(), QStringLiteral("1"));
    }

    void newEventsComeOntoTheMap()
    {
        Fixture f;
        f.store(QStringLiteral("4"), 1min, 2);
        QCOMPARE(f.shown(), QStringLiteral("4 1 2 3"));
    }

    void aFilteredSelectionKeepsItsCallout()
    {
        Fixture f;
        f.screen.toggle(f.event(1));
        f.screen.setSelectedFilter(MagnitudeFilter::major);
        QCOMPARE(f.shown(), QString());
        QVERIFY(f.screen.hasCallout());
        QCOMPARE(f.screen.magnitude(), 4.1);
        f.screen.dismissCallout();
        QVERIFY(!f.screen.hasCallout());
        QVERIFY(!f.screen.markers()->selected());
    }

    void tappingMovesAndEndsTheSelection()
    {
        Fixture f;
        f.screen.toggle(f.event(0));
        f.screen.toggle(f.event(1));
        QCOMPARE(f.screen.markers()->selected()->eventID(), QStringLiteral("2"));
        f.screen.toggle(f.event(1));
        QVERIFY(!f.screen.hasCallout());
    }

    /// 2025-01-01 00:00 is the fake clock's beginning.
    void theCalloutTellsTheEvent()
    {
        Fixture f;
        f.screen.toggle(f.event(0));
        QCOMPARE(f.screen.location(), QStringLiteral("SW HIERRO"));
        QCOMPARE(f.screen.dateText(), QStringLiteral("Dec 31, 2024, 11:00\u202FPM UTC"));
        QCOMPARE(f.screen.depthText(), QStringLiteral("10 km"));
        QCOMPARE(f.screen.magnitudeType(), QStringLiteral("mbLg"));
        QSignalSpy detail(&f.screen, &MapScreen::detailRequested);
        f.screen.viewDetail();
        QCOMPARE(detail.count(), 1);
        QVERIFY(f.screen.hasCallout());
    }

    /// It says the same while it slides out.
    void aClosedCalloutKeepsItsTexts()
    {
        Fixture f;
        f.screen.toggle(f.event(1));
        f.screen.dismissCallout();
        QCOMPARE(f.screen.magnitude(), 4.1);
        QSignalSpy detail(&f.screen, &MapScreen::detailRequested);
        f.screen.viewDetail();
        QCOMPARE(detail.count(), 0);
    }

    void onlyTheScreenOnShowAnswersTheMenu()
    {
        Fixture f;
        f.world.notificationCenter.post(NotificationName::openFilter);
        QVERIFY(!f.screen.property("showFilterPopover").toBool());
        f.screen.appear();
        f.world.notificationCenter.post(NotificationName::openFilter);
        QVERIFY(f.screen.property("showFilterPopover").toBool());
        f.screen.setProperty("showFilterPopover", false);
        f.screen.disappear();
        f.world.notificationCenter.post(NotificationName::openFilter);
        QVERIFY(!f.screen.property("showFilterPopover").toBool());
    }
};

QTEST_MAIN(MapScreenTest)
#include "MapScreenTest.moc"

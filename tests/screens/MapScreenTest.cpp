// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Mapa/MapScreen.h"

#include "Core/Persistence/ModelContext.h"
#include "Support/FakeDataSource.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
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
        store(u"1"_s, 1h, 2.5);
        store(u"2"_s, 24h, 4.1);
        store(u"3"_s, 240h, 3.9);
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
        QCOMPARE(f.shown(), u"1 2 3"_s);
    }

    void eventsComeAsTheyAreStoredAndLeaveWithTheNextRedraw()
    {
        Fixture f;
        f.screen.setSelectedDateFilter(DateFilter::last24h);
        f.store(u"4"_s, 24h - 90s, 2);
        QCOMPARE(f.shown(), u"1 4 2"_s);
        f.world.clock.advance(59s);
        QCOMPARE(f.shown(), u"1 4 2"_s);
        f.world.clock.advance(1s);
        QCOMPARE(f.shown(), u"1 4"_s);
        // Not the minute alone: whatever is drawn anew finds the cut-off where it is by then.
        f.world.clock.advance(31s);
        QCOMPARE(f.shown(), u"1 4"_s);
        f.screen.toggle(f.event(0));
        QCOMPARE(f.shown(), u"1"_s);
    }

    void theCalloutIsThatOfTheLastTap()
    {
        Fixture f;
        QSignalSpy detail(&f.screen, &MapScreen::detailRequested);
        f.screen.toggle(f.event(0));
        f.screen.toggle(f.event(1));
        QCOMPARE(f.screen.markers()->selected()->eventID(), u"2"_s);
        f.screen.setSelectedFilter(MagnitudeFilter::major);
        QVERIFY2(f.shown().isEmpty() && f.screen.hasCallout(), "a filter takes no callout away");
        f.screen.viewDetail();
        QCOMPARE(detail.count(), 1);
        f.screen.dismissCallout();
        QVERIFY(!f.screen.hasCallout());
        QVERIFY(!f.screen.markers()->selected());
        // It says the same while it slides out, and opens nothing any more.
        QCOMPARE(f.screen.magnitude(), 4.1);
        f.screen.viewDetail();
        QCOMPARE(detail.count(), 1);
        f.screen.resetFilters();
        for (const bool isSelected : {true, false}) {
            f.screen.toggle(f.event(1));
            QCOMPARE(f.screen.hasCallout(), isSelected);
        }
    }

    void onlyTheScreenOnShowAnswersTheMenu()
    {
        Fixture f;
        const auto answers = [&f] {
            f.screen.setProperty("showFilterPopover", false);
            f.world.notificationCenter.post(NotificationName::openFilter);
            return f.screen.property("showFilterPopover").toBool();
        };
        QVERIFY(!answers());
        f.screen.appear();
        QVERIFY(answers());
        f.screen.disappear();
        QVERIFY(!answers());
    }
};

QTEST_MAIN(MapScreenTest)
#include "MapScreenTest.moc"

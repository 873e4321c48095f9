// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Core/ViewModels/EarthquakeListViewModel.h"
#include "Support/FakeDataSource.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"
#include "Support/World.h"

#include <QTest>

using namespace std::chrono_literals;

namespace {
/// The recent list on show, refreshing every ten minutes.
struct Scene
{
    explicit Scene(Instant now)
    {
        world.clock.setNow(now);
        list.onAppear(container.mainContext());
        world.settle();
    }

    /// An event of this moment comes onto the page.
    void happen(const char *eventID)
    {
        ParsedEarthquake row;
        row.eventID = QString::fromLatin1(eventID);
        row.date = world.clock.now();
        source->rows.append(row);
    }

    void pass(std::chrono::milliseconds time)
    {
        world.clock.advance(time);
        world.settle();
    }

    QString age() const { return list.lastUpdatedSubtitle().value_or(QStringLiteral("never")); }
    QString order() { return eventIDs(container.earthquakes().earthquakes()); }

    World world;
    ModelContainer container{{.isStoredInMemoryOnly = true}};
    FakeDataSource *source = new FakeDataSource;
    EarthquakeRepository repository{container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source)};
    EarthquakeListViewModel list{repository};
};
}

/// The wall clock, the zone and the machine's sleep, changed under a running program.
class ClockChangesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void clockSetByAYear_data()
    {
        const Table<int, QString, QString> row;
        row("back", -365, "updated just now", "before after");
        row("forward", 365, "updated 365 day(s) ago (22 Nov 2026)", "after before");
    }

    void clockSetByAYear()
    {
        const auto [days, expectedAge, expectedOrder] = Table<int, QString, QString>::current();
        Scene scene(instant("2026-11-22T12:00:00Z"));
        scene.happen("before");
        scene.pass(10min);
        const int fetches = scene.source->fetches;
        scene.world.clock.setNow(scene.world.clock.now() + days * 24h);
        QCOMPARE(scene.age(), expectedAge);
        scene.happen("after");
        scene.pass(10min);
        QCOMPARE(scene.source->fetches, fetches + 1);
        QCOMPARE(scene.age(), QStringLiteral("updated just now"));
        QCOMPARE(scene.order(), expectedOrder);
    }

    void zoneAndDaylightSavingLeaveAgesAlone()
    {
        const UserEnvironment home("C.UTF-8", "Atlantic/Canary");
        // Half an hour before the clocks go back from 2:00 to 1:00.
        Scene scene(instant("2025-10-26T00:30:00Z"));
        scene.happen("summer");
        scene.pass(10min);
        scene.source->fails = true;
        scene.pass(50min);
        QCOMPARE(scene.age(), QStringLiteral("updated 50 min ago"));
        const UserEnvironment away("C.UTF-8", "Pacific/Kiritimati");
        QCOMPARE(scene.age(), QStringLiteral("updated 50 min ago"));
        scene.source->fails = false;
        scene.happen("winter");
        scene.pass(10min);
        QCOMPARE(scene.age(), QStringLiteral("updated just now"));
        QCOMPARE(scene.order(), QStringLiteral("winter summer"));
    }

    void wakingRefreshesOnceAndSoon()
    {
        Scene scene(instant("2026-11-22T23:00:00Z"));
        scene.pass(7min);
        const int fetches = scene.source->fetches;
        scene.happen("overnight");
        scene.world.clock.suspend(8h);
        scene.pass(10s);
        QCOMPARE(scene.source->fetches, fetches + 1);
        QCOMPARE(scene.order(), QStringLiteral("overnight"));
        QCOMPARE(scene.age(), QStringLiteral("updated just now"));
        scene.pass(10min);
        QCOMPARE(scene.source->fetches, fetches + 2);
    }
};

QTEST_GUILESS_MAIN(ClockChangesTest)
#include "ClockChangesTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/EarthquakeListViewModel.h"

#include "Core/Notifications/NotificationSettings.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Support/FakeDataSource.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"
#include "Support/World.h"

#include <QSignalSpy>
#include <QTest>

using namespace std::chrono_literals;

namespace {
/// A model over an empty store in memory and a source that a test commands.
struct Fixture
{
    World world;
    ModelContainer container{{.isStoredInMemoryOnly = true}};
    FakeDataSource *source = new FakeDataSource;
    EarthquakeRepository repository{container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source)};
    std::unique_ptr<EarthquakeListViewModel> model = std::make_unique<EarthquakeListViewModel>(repository);

    Fixture() { world.settle(); }

    void pass(std::chrono::milliseconds time)
    {
        world.clock.advance(time);
        world.settle();
    }
    void appear()
    {
        model->onAppear(container.mainContext());
        world.settle();
    }
    /// Shows the list at this moment.
    void begin(Instant now)
    {
        world.clock.setNow(now);
        appear();
    }
    /// An event of this moment comes onto the page.
    void happen(const char *eventID) { source->rows.append(testRow(QString::fromLatin1(eventID), world.clock.now())); }
    QString age() const { return model->lastUpdatedSubtitle().value_or(QStringLiteral("never")); }
    QString order() { return eventIDs(container.earthquakes().earthquakes()); }
    void returnToForeground()
    {
        world.notificationCenter.post(NotificationName::appDidBecomeActive);
        world.settle();
    }
    void setInterval(RefreshInterval interval)
    {
        NotificationSettings::shared().setRefreshInterval(interval);
        world.settle();
    }
};
}

class EarthquakeListViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void searchComesThroughOnceItHasRested()
    {
        Fixture f;
        QSignalSpy delivered(f.model.get(), &EarthquakeListViewModel::debouncedSearchTextChanged);
        f.pass(299ms);
        QCOMPARE(delivered.count(), 0);
        f.pass(1ms);
        QVERIFY2(delivered.count() == 1, "the empty search of a new model comes through too");
        f.model->setSearchText(QStringLiteral(" m"));
        f.pass(299ms);
        f.model->setSearchText(QStringLiteral(" ma"));
        f.pass(299ms);
        QCOMPARE(delivered.count(), 1);
        f.pass(1ms);
        QCOMPARE(f.model->debouncedSearchText(), QStringLiteral(" ma"));
        QCOMPARE(delivered.count(), 2);
        for (const auto &[rest, deliveries] : {std::pair(299ms, 2), std::pair(300ms, 4)}) {
            f.model->setSearchText(QStringLiteral(" mar"));
            f.pass(rest);
            f.model->setSearchText(QStringLiteral(" ma"));
            f.pass(1s);
            QCOMPARE(delivered.count(), deliveries);
        }
    }

    void appearanceRefreshesFromTheLoopThenEveryInterval()
    {
        Fixture f;
        f.model->onAppear(f.container.mainContext());
        QCOMPARE(f.source->fetches, 0);
        f.world.settle();
        QCOMPARE(f.source->fetches, 1);
        f.pass(600s - 1ms);
        QCOMPARE(f.source->fetches, 1);
        f.pass(1ms);
        QCOMPARE(f.source->fetches, 2);
        // One that fails does not end the loop.
        f.source->fails = true;
        f.pass(600s);
        f.pass(600s);
        QCOMPARE(f.source->fetches, 4);
    }

    void intervalBeginsWhenTheRefreshHasEnded()
    {
        Fixture f;
        f.source->holdsAnswers = true;
        f.appear();
        f.pass(1h);
        QVERIFY(!f.model->isAutoRefreshing());
        f.source->release();
        f.world.settle();
        f.pass(600s);
        QCOMPARE(f.source->fetches, 2);
        // The second refresh takes five minutes, so the third begins fifteen after the second.
        f.pass(300s);
        f.source->release();
        f.pass(600s - 1ms);
        QCOMPARE(f.source->fetches, 2);
        f.pass(1ms);
        QCOMPARE(f.source->fetches, 3);
    }

    void changedIntervalStartsTheLoopAnew()
    {
        Fixture f;
        f.appear();
        f.pass(599s);
        f.setInterval(RefreshInterval::fiveMinutes);
        f.pass(299s);
        QCOMPARE(f.source->fetches, 1);
        f.pass(1s);
        QCOMPARE(f.source->fetches, 2);
        // The loop of ten minutes is gone.
        f.pass(299s);
        QCOMPARE(f.source->fetches, 2);
    }

    void manualIntervalEndsTheLoop()
    {
        Fixture f;
        f.appear();
        QVERIFY(f.model->isAutoRefreshing());
        f.setInterval(RefreshInterval::disabled);
        QVERIFY(!f.model->isAutoRefreshing());
        f.appear();
        QVERIFY(!f.model->isAutoRefreshing());
        f.pass(2h);
        QCOMPARE(f.source->fetches, 2);
    }

    void returnToTheForegroundRefreshesAndStartsTheLoopAnew()
    {
        Fixture f;
        f.appear();
        f.pass(599s);
        f.world.notificationCenter.post(NotificationName::appDidBecomeActive);
        QCOMPARE(f.source->fetches, 1);
        f.world.settle();
        QCOMPARE(f.source->fetches, 2);
        f.pass(599s);
        QCOMPARE(f.source->fetches, 2);
        f.pass(1s);
        QCOMPARE(f.source->fetches, 3);
        f.world.notificationCenter.post(NotificationName::openFilter);
        f.world.settle();
        QCOMPARE(f.source->fetches, 3);
    }

    void returnDuringARefreshLeavesOneLoop()
    {
        Fixture f;
        f.appear();
        f.source->holdsAnswers = true;
        f.pass(600s);
        QCOMPARE(f.source->fetches, 2);
        f.returnToForeground();
        QCOMPARE(f.source->fetches, 2);
        f.source->holdsAnswers = false;
        f.source->release();
        f.pass(600s);
        QCOMPARE(f.source->fetches, 3);
        f.pass(600s);
        QCOMPARE(f.source->fetches, 4);
    }

    void hiddenScreenRefreshesNoMoreUntilTheForegroundReturns()
    {
        Fixture f;
        f.appear();
        f.model->stopAutoRefresh();
        f.pass(2h);
        QCOMPARE(f.source->fetches, 1);
        f.returnToForeground();
        QVERIFY(f.model->isAutoRefreshing());
        QCOMPARE(f.source->fetches, 2);
    }

    void firstRefreshRunsEvenWhenItsScreenHasGone()
    {
        Fixture f;
        f.model->onAppear(f.container.mainContext());
        f.model.reset();
        f.world.settle();
        QCOMPARE(f.source->fetches, 1);
        f.pass(2h);
        QCOMPARE(f.source->fetches, 1);
    }

    void manualRefreshStartsTheCountdownAndWaitsForIt()
    {
        Fixture f;
        f.model->manualRefresh();
        QVERIFY(f.repository.isCoolingDown());
        f.source->fails = true;
        f.pass(59s);
        f.model->manualRefresh();
        QCOMPARE(f.source->fetches, 1);
        QVERIFY(!f.repository.lastError());
        // Other refreshes go through the countdown.
        f.model->refresh();
        QCOMPARE(f.source->fetches, 2);
        f.pass(1s);
        f.model->manualRefresh();
        QCOMPARE(f.source->fetches, 3);
    }

    void clockSetByAYear_data()
    {
        const Table<int, QString, QString> row;
        row("back", -365, "updated just now", "before after");
        row("forward", 365, "updated 365 day(s) ago (22 Nov 2026)", "after before");
    }

    void clockSetByAYear()
    {
        const auto [days, expectedAge, expectedOrder] = Table<int, QString, QString>::current();
        Fixture f;
        f.begin(instant("2026-11-22T12:00:00Z"));
        f.happen("before");
        f.pass(10min);
        const int fetches = f.source->fetches;
        f.world.clock.setNow(f.world.clock.now() + days * 24h);
        QCOMPARE(f.age(), expectedAge);
        f.happen("after");
        f.pass(10min);
        QCOMPARE(f.source->fetches, fetches + 1);
        QCOMPARE(f.age(), QStringLiteral("updated just now"));
        QCOMPARE(f.order(), expectedOrder);
    }

    void zoneAndDaylightSavingLeaveAgesAlone()
    {
        const UserEnvironment home("C.UTF-8", "Atlantic/Canary");
        // Half an hour before the clocks go back from 2:00 to 1:00.
        Fixture f;
        f.begin(instant("2025-10-26T00:30:00Z"));
        f.happen("summer");
        f.pass(10min);
        f.source->fails = true;
        f.pass(50min);
        QCOMPARE(f.age(), QStringLiteral("updated 50 min ago"));
        const UserEnvironment away("C.UTF-8", "Pacific/Kiritimati");
        QCOMPARE(f.age(), QStringLiteral("updated 50 min ago"));
        f.source->fails = false;
        f.happen("winter");
        f.pass(10min);
        QCOMPARE(f.age(), QStringLiteral("updated just now"));
        QCOMPARE(f.order(), QStringLiteral("winter summer"));
    }

    void wakingRefreshesOnceAndSoon()
    {
        Fixture f;
        f.begin(instant("2026-11-22T23:00:00Z"));
        f.pass(7min);
        const int fetches = f.source->fetches;
        f.happen("overnight");
        f.world.clock.suspend(8h);
        f.pass(10s);
        QCOMPARE(f.source->fetches, fetches + 1);
        QCOMPARE(f.order(), QStringLiteral("overnight"));
        QCOMPARE(f.age(), QStringLiteral("updated just now"));
        f.pass(10min);
        QCOMPARE(f.source->fetches, fetches + 2);
    }

    void ageInWords_data()
    {
        const Table<qint64, QString> row;
        row("59.9 s", 59900, "updated just now");
        row("60 s", 60000, "updated 1 min ago");
        row("119.9 s", 119900, "updated 1 min ago");
        row("3599 s", 3599000, "updated 59 min ago");
        row("3600 s", 3600000, "updated 1 h ago");
        row("86399 s", 86399000, "updated 23 h ago");
        row("86400 s", 86400000, "updated 1 day(s) ago (01 Jan 2025)");
    }

    void ageInWords()
    {
        const auto [elapsedMs, expected] = Table<qint64, QString>::current();
        Fixture f;
        QVERIFY(!f.model->lastUpdatedSubtitle());
        f.model->refresh();
        f.world.clock.setNow(f.world.clock.now() + std::chrono::milliseconds(elapsedMs));
        QCOMPARE(f.age(), expected);
    }
};

QTEST_GUILESS_MAIN(EarthquakeListViewModelTest)
#include "EarthquakeListViewModelTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/EarthquakeListViewModel.h"

#include "Core/Notifications/NotificationSettings.h"
#include "Core/ViewModels/MapViewModel.h"
#include "StoreScene.h"
#include "Support/Table.h"
#include "Support/TestInstant.h"
#include "Support/UserEnvironment.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
/// A model over an empty store and a source that a test commands.
struct Fixture : StoreScene
{
    std::optional<EarthquakeListViewModel> model{std::in_place, repository};

    Fixture() { world.settle(); }

    void pass(std::chrono::milliseconds time)
    {
        world.clock.advance(time);
        world.settle();
    }
    void appear()
    {
        model->onAppear(context);
        world.settle();
    }
    /// Shows the list at this moment.
    void begin(Instant now)
    {
        world.clock.setNow(now);
        appear();
    }
    /// An event of this moment comes onto the page.
    void happen(const QString &eventID) { source->rows.append(testRow(eventID, world.clock.now())); }
    /// How many refreshes were begun so far, once so much time has passed.
    int fetchesAfter(std::chrono::milliseconds time)
    {
        pass(time);
        return source->fetches;
    }
    QString age() const { return model->lastUpdatedSubtitle().value_or(u"never"_s); }
    QString order() { return eventIDs(container.earthquakes().earthquakes()); }
    void post(const QString &notification)
    {
        world.notificationCenter.post(notification);
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
        f.pass(300ms);
        const QSignalSpy delivered(&*f.model, &EarthquakeListViewModel::debouncedSearchTextChanged);
        for (const QString &typed : {u" m"_s, u" ma"_s}) {
            f.model->setSearchText(typed);
            f.pass(299ms);
        }
        QCOMPARE(delivered.count(), 0);
        f.pass(1ms);
        QCOMPARE(delivered.count(), 1);
        QCOMPARE(f.model->debouncedSearchText(), u" ma"_s);
    }

    void intervalBeginsWhenTheRefreshHasEnded()
    {
        Fixture f;
        f.source->holdsAnswers = true;
        f.model->onAppear(f.context);
        QCOMPARE(f.source->fetches, 0);
        QCOMPARE(f.fetchesAfter(1h), 1);
        QVERIFY(!f.model->isAutoRefreshing());
        f.source->release();
        f.world.settle();
        QCOMPARE(f.fetchesAfter(600s - 1ms), 1);
        QCOMPARE(f.fetchesAfter(1ms), 2);
        // The second refresh takes five minutes and fails; the third begins fifteen minutes after it all the same.
        f.source->fails = true;
        f.pass(300s);
        f.source->release();
        QCOMPARE(f.fetchesAfter(600s - 1ms), 2);
        QCOMPARE(f.fetchesAfter(1ms), 3);
    }

    void changedIntervalStartsTheLoopAnewOrEndsIt()
    {
        Fixture f;
        f.appear();
        f.pass(599s);
        f.setInterval(RefreshInterval::fiveMinutes);
        QCOMPARE(f.fetchesAfter(299s), 1);
        QCOMPARE(f.fetchesAfter(1s), 2);
        QVERIFY2(f.fetchesAfter(299s) == 2, "the loop of ten minutes is gone");
        f.setInterval(RefreshInterval::disabled);
        QVERIFY(!f.model->isAutoRefreshing());
        f.appear();
        QVERIFY(!f.model->isAutoRefreshing());
        QCOMPARE(f.fetchesAfter(2h), 3);
    }

    void returnToTheForegroundRefreshesAndStartsTheLoopAnew()
    {
        Fixture f;
        f.appear();
        f.pass(599s);
        f.post(NotificationName::appDidBecomeActive);
        QCOMPARE(f.source->fetches, 2);
        QCOMPARE(f.fetchesAfter(599s), 2);
        // During a refresh it begins no other, and leaves one loop.
        f.source->holdsAnswers = true;
        f.pass(1s);
        f.post(NotificationName::appDidBecomeActive);
        QCOMPARE(f.source->fetches, 3);
        f.source->holdsAnswers = false;
        f.source->release();
        QCOMPARE(f.fetchesAfter(600s), 4);
        QCOMPARE(f.fetchesAfter(600s), 5);
        f.model->stopAutoRefresh();
        f.post(NotificationName::openFilter);
        QVERIFY2(f.fetchesAfter(2h) == 5, "a hidden screen refreshes no more");
        f.post(NotificationName::appDidBecomeActive);
        QVERIFY(f.model->isAutoRefreshing());
        QCOMPARE(f.source->fetches, 6);
    }

    void firstRefreshRunsEvenWhenItsScreenHasGone()
    {
        Fixture f;
        f.model->onAppear(f.context);
        f.model.reset();
        QCOMPARE(f.fetchesAfter(2h), 1);
        std::make_unique<MapViewModel>(f.repository)->onAppear();
        QCOMPARE(f.source->fetches, 1);
        QCOMPARE(f.fetchesAfter(2h), 2);
    }

    void manualRefreshStartsTheCountdownAndWaitsForIt()
    {
        Fixture f;
        for (const int fetches : {1, 2}) {
            f.model->manualRefresh();
            QCOMPARE(f.fetchesAfter(59s), fetches);
            f.model->manualRefresh();
            QCOMPARE(f.fetchesAfter(1s), fetches);
        }
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
        f.happen(u"before"_s);
        const int fetches = f.fetchesAfter(10min);
        f.world.clock.setNow(f.world.clock.now() + days * 24h);
        QCOMPARE(f.age(), expectedAge);
        f.happen(u"after"_s);
        QCOMPARE(f.fetchesAfter(10min), fetches + 1);
        QCOMPARE(f.age(), u"updated just now"_s);
        QCOMPARE(f.order(), expectedOrder);
    }

    void zoneAndDaylightSavingLeaveAgesAlone()
    {
        const UserEnvironment home("C.UTF-8", "Atlantic/Canary");
        // Half an hour before the clocks go back from 2:00 to 1:00.
        Fixture f;
        f.begin(instant("2025-10-26T00:30:00Z"));
        f.happen(u"summer"_s);
        f.pass(10min);
        f.source->fails = true;
        f.pass(50min);
        QCOMPARE(f.age(), u"updated 50 min ago"_s);
        const UserEnvironment away("C.UTF-8", "Pacific/Kiritimati");
        QCOMPARE(f.age(), u"updated 50 min ago"_s);
        f.source->fails = false;
        f.happen(u"winter"_s);
        f.pass(10min);
        QCOMPARE(f.age(), u"updated just now"_s);
        QCOMPARE(f.order(), u"winter summer"_s);
    }

    void wakingRefreshesOnceAndSoon()
    {
        Fixture f;
        f.begin(instant("2026-11-22T23:00:00Z"));
        const int fetches = f.fetchesAfter(7min);
        f.happen(u"overnight"_s);
        f.world.clock.suspend(8h);
        QCOMPARE(f.fetchesAfter(10s), fetches + 1);
        QCOMPARE(f.order(), u"overnight"_s);
        QCOMPARE(f.age(), u"updated just now"_s);
        QCOMPARE(f.fetchesAfter(10min), fetches + 2);
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
        QCOMPARE(f.age(), u"never"_s);
        f.model->refresh();
        f.world.clock.setNow(f.world.clock.now() + std::chrono::milliseconds(elapsedMs));
        QCOMPARE(f.age(), expected);
    }
};

QTEST_GUILESS_MAIN(EarthquakeListViewModelTest)
#include "EarthquakeListViewModelTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "macOS/MacBackgroundRefreshManager.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Persistence/PersistenceController.h"
#include "PageGenerator.h"
#include "Platform/BackgroundActivity/ClockActivityScheduler.h"
#include "Support/World.h"

#include <QTest>

#include <SQLiteCpp/Database.h>

using namespace std::chrono_literals;

class MacBackgroundRefreshManagerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settingsPutOneActivityInForceOrNone()
    {
        World world;
        int ended = 0;
        world.onInvalidate = [&ended] { ++ended; };
        MacBackgroundRefreshManager::cancel();
        QCOMPARE(ended, 0);
        for (const auto &[choice, seconds] : {std::pair(u"5min", 300.0), {u"60min", 3600.0}}) {
            NotificationSettings::shared().setRefreshInterval(*RefreshInterval::fromRawValue(choice));
            MacBackgroundRefreshManager::applySettings();
            const FakeBackgroundActivityScheduler &scheduler = *world.schedulers.back();
            QVERIFY(scheduler.repeats && scheduler.block);
            QCOMPARE(scheduler.interval, seconds);
            QCOMPARE(scheduler.tolerance, seconds / 10);
        }
        QCOMPARE(ended, 1);
        NotificationSettings::shared().setRefreshInterval(RefreshInterval::disabled);
        MacBackgroundRefreshManager::applySettings();
        MacBackgroundRefreshManager::cancel();
        QCOMPARE(ended, 2);
        QCOMPARE(world.schedulers.size(), 2U);
    }

    void runIsReportedBeforeItsFirstByteAndStoresAndTellsWhatItFinds()
    {
        World world;
        world.userNotificationCenter.status = NotificationAuthorizationStatus::authorized;
        NotificationSettings::shared().setIsEnabled(true);
        NotificationSettings::shared().setGlobalMagnitudeCategory(MagnitudeCategory::moderate);
        PageGenerator generator(7);
        QList<ParsedEarthquake> rows = generator.ordinary(12, world.clock.now());
        for (ParsedEarthquake &row : rows)
            row.magnitude = 1;
        rows.last().magnitude = 4;
        world.urlSession.enqueue(PageGenerator::page(rows));
        ModelContext &screens = PersistenceController::shared().container().mainContext();
        MacBackgroundRefreshManager::scheduleRefresh(300);
        int reports = 0;
        world.schedulers.back()->block([&](BackgroundActivityScheduler::Result result) {
            QVERIFY(result == BackgroundActivityScheduler::Result::finished);
            QVERIFY(world.urlSession.requests.empty());
            ++reports;
        });
        QCOMPARE(reports, 1);
        world.settle();
        QCOMPARE(world.urlSession.requests.size(), 1U);
        QCOMPARE(screens.fetchCount({}), 12);
        QCOMPARE(world.userNotificationCenter.sent.size(), 1U);
        QCOMPARE(world.userNotificationCenter.sent.front().identifier, rows.last().eventID);
    }

    void runWithoutAStoreIsOneThatFailed()
    {
        World world;
        SQLite::Database store(PersistenceController::shared().container().location().toStdString(),
                               SQLite::OPEN_READWRITE);
        MacBackgroundRefreshManager::scheduleRefresh(300);
        for (const auto &[version, requests] : {std::pair("99", 0U), {"1", 1U}}) {
            store.exec(std::string("PRAGMA user_version = ") + version);
            world.schedulers.back()->block([](BackgroundActivityScheduler::Result) {});
            world.settle();
            QCOMPARE(world.urlSession.requests.size(), requests);
        }
    }

    void endInTheMiddleOfARunIsHarmless()
    {
        World world;
        world.urlSession.holdsAnswers = true;
        MacBackgroundRefreshManager::scheduleRefresh(300);
        world.schedulers.back()->block([](BackgroundActivityScheduler::Result) {});
        world.settle();
        QCOMPARE(world.urlSession.requests.size(), 1U);
    }

    void clockBringsARunAtEachInterval()
    {
        World world;
        int runs = 0;
        ClockActivityScheduler scheduler(world.clock);
        scheduler.setRepeats(true);
        scheduler.setInterval(300);
        scheduler.scheduleWithBlock([&](const auto &completed) {
            ++runs;
            completed(BackgroundActivityScheduler::Result::finished);
        });
        world.clock.advance(299s);
        QCOMPARE(runs, 0);
        world.clock.advance(901s);
        QCOMPARE(runs, 4);
        // What was missed while the machine was suspended is one run; then the rhythm is the usual one.
        world.clock.suspend(8h);
        QCOMPARE(runs, 5);
        world.clock.advance(299s);
        QCOMPARE(runs, 5);
        world.clock.advance(1s);
        QCOMPARE(runs, 6);
        scheduler.invalidate();
        scheduler.scheduleWithBlock([&](const auto &) { ++runs; });
        world.clock.advance(3600s);
        QCOMPARE(runs, 6);
        QCOMPARE(world.clock.sleeping(), 0);
    }
};

QTEST_GUILESS_MAIN(MacBackgroundRefreshManagerTest)
#include "MacBackgroundRefreshManagerTest.moc"

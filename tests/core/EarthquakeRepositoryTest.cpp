// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Repositories/EarthquakeRepository.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Platform/Support/Async.h"
#include "Support/FakeDataSource.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QPromise>
#include <QTest>

#include <SQLiteCpp/Database.h>

using namespace std::chrono_literals;

namespace {
const QString savedKey = QStringLiteral("lastUpdatedEarthquakes");

ParsedEarthquake quake(const char *eventID, double magnitude = 2.5, const char *location = "SW HIERRO")
{
    return testRow(QString::fromLatin1(eventID), Instant(1735689600s), magnitude, QString::fromLatin1(location));
}

QString message(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const std::exception &caught) {
        return QString::fromUtf8(caught.what());
    }
}

/// A repository over a store of its own, with a record of what its observers were told.
struct Scene
{
    Scene()
    {
        const auto log = [this](void (EarthquakeRepository::*changed)(), auto text) {
            QObject::connect(repository.get(), changed, repository.get(), [this, text] { told.append(text()); });
        };
        log(&EarthquakeRepository::isLoadingChanged,
            [this] { return QLatin1String(repository->isLoading() ? "loading" : "idle"); });
        log(&EarthquakeRepository::lastErrorChanged,
            [this] { return repository->lastError() ? QStringLiteral("error") : QStringLiteral("no error"); });
        log(&EarthquakeRepository::lastUpdatedChanged, [this] {
            return world.userDefaults.writes.isEmpty() ? QStringLiteral("updated") : QStringLiteral("updated again");
        });
        log(&EarthquakeRepository::isCoolingDownChanged,
            [this] { return QLatin1String(repository->isCoolingDown() ? "cooling" : "cool"); });
        log(&EarthquakeRepository::cooldownRemainingSecondsChanged,
            [this] { return QString::number(repository->cooldownRemainingSeconds()); });
    }

    void refresh(const QList<ParsedEarthquake> &rows, bool startsCooldown = false)
    {
        source->rows = rows;
        repository->refresh(startsCooldown);
    }

    /// Runs a statement behind the program's back.
    void execute(const char *sql) const
    {
        SQLite::Database(container.location().toStdString(), SQLite::OPEN_READWRITE).exec(sql);
    }

    /// Magnitudes by row, to tell events and their values.
    QString stored() const
    {
        QStringList rows;
        for (const Earthquake &earthquake : ModelContext(container).fetch({}))
            rows.append(earthquake.eventID() + QLatin1Char(':') + QString::number(earthquake.magnitude()));
        return rows.join(QLatin1Char(' '));
    }

    QString log() const { return told.join(QStringLiteral(", ")); }

    World world;
    mutable ModelContainer container{{.path = world.folder.filePath(QStringLiteral("store.sqlite"))}};
    FakeDataSource *source = new FakeDataSource;
    std::unique_ptr<EarthquakeRepository> repository =
        std::make_unique<EarthquakeRepository>(container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source));
    QStringList told;
};

constexpr auto refuseInserts =
    "CREATE TRIGGER refuse BEFORE INSERT ON earthquake BEGIN SELECT RAISE(ABORT, 'refused by a trigger'); END";
}

class EarthquakeRepositoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void observersAreToldInOrder_data()
    {
        const Table<QByteArray, bool, QString> row;
        const QByteArray fetch("fetch");
        const QByteArray save("save");
        row("success", QByteArray(), false, "loading, no error, updated, idle");
        row("manual success", QByteArray(), true, "loading, no error, updated, 60, cooling, idle");
        row("manual, fetch fails", fetch, true, "loading, no error, error, 60, cooling, idle");
        row("save fails", save, false, "loading, no error, error, idle");
    }

    void observersAreToldInOrder()
    {
        const auto [fails, startsCooldown, expected] = Table<QByteArray, bool, QString>::current();
        Scene scene;
        if (fails == "save")
            scene.execute(refuseInserts);
        scene.source->rows = {quake("a")};
        scene.source->fails = fails == "fetch";
        scene.source->holdsAnswers = true;
        const QFuture<void> ended = scene.repository->refresh(startsCooldown);
        QVERIFY(!ended.isFinished());
        scene.source->release();
        QVERIFY(ended.isFinished());
        QCOMPARE(scene.log(), expected);
        QCOMPARE(scene.world.userDefaults.writes, fails.isEmpty() ? QStringList{savedKey} : QStringList{});
    }

    void theErrorStandsAsItCame()
    {
        Scene scene;
        scene.source->throws = true;
        QVERIFY(scene.repository->refresh(true).isFinished());
        QCOMPARE(message(scene.repository->lastError()), QStringLiteral("the source throws"));
        QVERIFY(scene.repository->isCoolingDown());
        scene.source->throws = false;
        scene.source->holdsAnswers = true;
        scene.repository->refresh();
        QVERIFY(!scene.repository->lastError());
        scene.source->open.reset();
        QVERIFY_EXCEPTION_THROWN(std::rethrow_exception(scene.repository->lastError()), OperationAbandoned);
        QVERIFY(!scene.repository->isLoading());
    }

    void aSecondRefreshIsDropped()
    {
        Scene scene;
        scene.source->holdsAnswers = true;
        scene.repository->refresh();
        scene.told.clear();
        QVERIFY(scene.repository->refresh(true).isFinished());
        QCOMPARE(scene.source->fetches, 1);
        QCOMPARE(scene.log(), QString());
        scene.source->release();
        QVERIFY(!scene.repository->isCoolingDown());
    }

    void onlyUnknownEventsAreStored_data()
    {
        const Table<QList<ParsedEarthquake>, QString> row;
        using Page = QList<ParsedEarthquake>;
        row("all known", Page{quake("b", 3), quake("a")}, "a:2.5 b:3");
        row("one new among known", Page{quake("a", 5), quake("c", 1), quake("b", 3)}, "a:2.5 b:3 c:1");
        row("number differs in case", Page{quake("A", 1)}, "a:2.5 b:3 A:1");
        row("twice in the page: the last values", Page{quake("c", 1), quake("c", 2)}, "a:2.5 b:3 c:2");
    }

    void onlyUnknownEventsAreStored()
    {
        const auto [page, expected] = Table<QList<ParsedEarthquake>, QString>::current();
        Scene scene;
        scene.refresh({quake("a"), quake("b", 3)});
        const Instant first = *scene.repository->lastUpdated();
        scene.world.clock.advance(7min);
        scene.refresh(page);
        QCOMPARE(scene.stored(), expected);
        QVERIFY(!scene.repository->lastError());
        QVERIFY(*scene.repository->lastUpdated() == first + 7min);
        QVERIFY(scene.world.userDefaults.dateValue(savedKey) == first + 7min);
        const std::vector<Earthquake> rows = ModelContext(scene.container).fetch({});
        QVERIFY(rows.front().fetchedAt() == first);
        QVERIFY(rows.size() == 2 || rows.back().fetchedAt() == first + 7min);
    }

    void aFailedSaveLosesNothing()
    {
        Scene scene;
        scene.execute(refuseInserts);
        scene.refresh({quake("a")});
        QVERIFY(message(scene.repository->lastError()).contains(QStringLiteral("refused by a trigger")));
        QCOMPARE(scene.stored(), QString());
        scene.execute("DROP TRIGGER refuse");
        // Pending events are known, so a page of them alone saves nothing.
        scene.refresh({quake("a")});
        QCOMPARE(scene.stored(), QString());
        QVERIFY(scene.repository->lastUpdated());
        scene.refresh({quake("a"), quake("b")});
        QCOMPARE(scene.stored(), QStringLiteral("a:2.5 b:2.5"));
    }

    void aStoreThatCannotTellCountsAsEmpty()
    {
        Scene scene;
        scene.refresh({quake("a")});
        const EarthquakeQuery &query = scene.container.earthquakes();
        scene.execute("ALTER TABLE earthquake RENAME TO hidden");
        scene.refresh({quake("a", 4), quake("b")});
        // Nothing tells yet that the pending "a" will be the stored one's row.
        QCOMPARE(query.count(), qsizetype(3));
        QVERIFY(message(scene.repository->lastError()).contains(QStringLiteral("store.sqlite")));
        scene.execute("ALTER TABLE hidden RENAME TO earthquake");
        scene.refresh({quake("c")});
        QCOMPARE(scene.stored(), QStringLiteral("a:4 b:2.5 c:2.5"));
        QCOMPARE(query.count(), qsizetype(3));
    }

    void lastUpdatedIsTheSavedDate()
    {
        World world;
        world.userDefaults.setDate(savedKey, Instant(1735689600123ms));
        ModelContainer container({.isStoredInMemoryOnly = true});
        auto *source = new FakeDataSource;
        const EarthquakeRepository repository(container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source));
        QCOMPARE(source->fetches, 0);
        QVERIFY(repository.lastUpdated() == Instant(1735689600123ms));
    }

    void theRepositoryMayDieAtItsLastAct()
    {
        Scene scene;
        scene.source->holdsAnswers = true;
        const QFuture<void> ended = scene.repository->refresh(true);
        QObject::connect(scene.repository.get(), &EarthquakeRepository::isLoadingChanged, [&] {
            scene.told.clear();
            scene.repository.reset();
        });
        const auto open = scene.source->open;
        open->addResult(QList{quake("a")});
        open->finish();
        QVERIFY(ended.isFinished() && !ended.isCanceled());
        scene.world.clock.advance(2min);
        QCOMPARE(scene.world.clock.sleeping(), 0);
    }

    void theRepositoryMayDieWhileFetching_data()
    {
        const Table<bool> row;
        row("the answer comes all the same", true);
        row("the source gives up as it goes", false);
    }

    void theRepositoryMayDieWhileFetching()
    {
        const auto [answers] = Table<bool>::current();
        Scene scene;
        scene.source->holdsAnswers = true;
        const QFuture<void> ended = scene.repository->refresh();
        scene.told.clear();
        const auto open = answers ? scene.source->open : nullptr;
        scene.repository.reset();
        if (open) {
            open->addResult(QList{quake("a")});
            open->finish();
        }
        QVERIFY(ended.isFinished());
        QCOMPARE(scene.log(), QString());
        QCOMPARE(scene.stored(), QString());
    }

    void aRetiredRepositoryEndsAfterItsRefresh()
    {
        Scene scene;
        auto *source = new FakeDataSource;
        source->rows = {quake("a")};
        source->holdsAnswers = true;
        const QPointer repository(
            new EarthquakeRepository(scene.container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source)));
        repository->refresh();
        EarthquakeRepository::retire(std::unique_ptr<EarthquakeRepository>(repository), &scene.container);
        source->release();
        scene.world.settle();
        QVERIFY(scene.stored().startsWith(u'a'));
        QVERIFY(!repository);
    }

    void theCountdownGoesToZeroBySeconds()
    {
        Scene scene;
        scene.refresh({}, true);
        scene.world.clock.advance(10s);
        scene.told.clear();
        // A refresh of its own accord leaves it alone.
        scene.refresh({});
        scene.world.clock.advance(1s);
        QCOMPARE(scene.log(), QStringLiteral("loading, no error, updated again, idle, 49"));
        scene.world.clock.advance(48s);
        QVERIFY(scene.repository->isCoolingDown());
        scene.world.clock.advance(1s);
        QVERIFY(scene.log().endsWith(QStringLiteral(", 2, 1, 0, cool, 0")));
        QCOMPARE(scene.world.clock.sleeping(), 0);
    }

    void aSecondCountdownIsClearedByTheFirstOnesEnd()
    {
        Scene scene;
        scene.refresh({}, true);
        scene.world.clock.advance(2s);
        scene.told.clear();
        scene.refresh({}, true);
        QCOMPARE(scene.log(), QStringLiteral("loading, no error, updated again, 60, cooling, idle"));
        scene.told.clear();
        scene.world.clock.advance(3s);
        QCOMPARE(scene.log(), QStringLiteral("cool, 0, 59, 58, 57"));
        scene.world.clock.advance(57s);
        QVERIFY(scene.log().endsWith(QStringLiteral(", 1, 0, cool, 0")));
    }
};

QTEST_GUILESS_MAIN(EarthquakeRepositoryTest)
#include "EarthquakeRepositoryTest.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Repositories/EarthquakeRepository.h"
#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Models/Region.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Platform/Support/Async.h"
#include "Support/World.h"

#include <QPromise>
#include <QSignalSpy>
#include <QTest>

#include <SQLiteCpp/Database.h>

using namespace std::chrono_literals;

namespace {
const QString savedKey = QStringLiteral("lastUpdatedEarthquakes");

/// A source whose fetches end when a test says so.
class HeldSource : public EarthquakeDataSource
{
public:
    using Rows = QList<ParsedEarthquake>;

    const Region &region() const override { return Region::canaryIslands(); }

    QFuture<Rows> fetchEarthquakes() override
    {
        ++fetches;
        if (throwsAtOnce)
            throw std::runtime_error("no session");
        promise = std::make_unique<QPromise<Rows>>();
        promise->start();
        return promise->future();
    }

    void answer(const Rows &rows)
    {
        promise->addResult(rows);
        promise->finish();
    }

    void fail(const char *why)
    {
        promise->setException(std::make_exception_ptr(std::runtime_error(why)));
        promise->finish();
    }

    int fetches = 0;
    bool throwsAtOnce = false;
    std::unique_ptr<QPromise<Rows>> promise;
};

ParsedEarthquake row(const char *eventID, double magnitude = 2.5, const char *location = "SW HIERRO")
{
    return {.eventID = QString::fromLatin1(eventID),
            .date = Instant(1735689600s),
            .latitude = 27.8,
            .longitude = -18.1,
            .depth = 10,
            .magnitude = magnitude,
            .magnitudeType = QStringLiteral("mbLg"),
            .maxIntensity = {},
            .location = QString::fromLatin1(location)};
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
        repository->refresh(startsCooldown);
        source->answer(rows);
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
    HeldSource *source = new HeldSource;
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
        QTest::addColumn<QByteArray>("fails");
        QTest::addColumn<bool>("startsCooldown");
        QTest::addColumn<QString>("told");
        const QByteArray fetch("fetch");
        const QByteArray save("save");
        QTest::newRow("success") << QByteArray() << false << "loading, no error, updated, idle";
        QTest::newRow("manual success") << QByteArray() << true << "loading, no error, updated, 60, cooling, idle";
        QTest::newRow("fetch fails") << fetch << false << "loading, no error, error, idle";
        QTest::newRow("manual, fetch fails") << fetch << true << "loading, no error, error, 60, cooling, idle";
        QTest::newRow("save fails") << save << false << "loading, no error, error, idle";
        QTest::newRow("manual, save fails") << save << true << "loading, no error, error, 60, cooling, idle";
    }

    void observersAreToldInOrder()
    {
        QFETCH(QByteArray, fails);
        QFETCH(bool, startsCooldown);
        Scene scene;
        if (fails == "save")
            scene.execute(refuseInserts);
        const QFuture<void> ended = scene.repository->refresh(startsCooldown);
        QVERIFY(!ended.isFinished());
        if (fails == "fetch")
            scene.source->fail("no network");
        else
            scene.source->answer({row("a")});
        QVERIFY(ended.isFinished());
        QTEST(scene.log(), "told");
        QCOMPARE(scene.world.userDefaults.writes, fails.isEmpty() ? QStringList{savedKey} : QStringList{});
    }

    void theErrorStandsAsItCame()
    {
        Scene scene;
        scene.repository->refresh();
        scene.source->fail("no network");
        QCOMPARE(message(scene.repository->lastError()), QStringLiteral("no network"));
        scene.repository->refresh();
        QVERIFY(!scene.repository->lastError());
        scene.source->promise.reset();
        QVERIFY_EXCEPTION_THROWN(std::rethrow_exception(scene.repository->lastError()), OperationAbandoned);
        QVERIFY(!scene.repository->isLoading());
    }

    void aSourceThatThrowsAtOnceFailsAsAnyOther()
    {
        Scene scene;
        scene.source->throwsAtOnce = true;
        QVERIFY(scene.repository->refresh(true).isFinished());
        QCOMPARE(message(scene.repository->lastError()), QStringLiteral("no session"));
        QCOMPARE(scene.log(), QStringLiteral("loading, no error, error, 60, cooling, idle"));
    }

    void aSecondRefreshIsDropped()
    {
        Scene scene;
        scene.repository->refresh();
        scene.told.clear();
        QVERIFY(scene.repository->refresh(true).isFinished());
        QCOMPARE(scene.source->fetches, 1);
        QCOMPARE(scene.log(), QString());
        scene.source->answer({});
        QVERIFY(!scene.repository->isCoolingDown());
    }

    void onlyUnknownEventsAreStored_data()
    {
        QTest::addColumn<QList<ParsedEarthquake>>("page");
        QTest::addColumn<QString>("stored");
        using Page = QList<ParsedEarthquake>;
        QTest::newRow("empty page") << Page{} << "a:2.5 b:3";
        QTest::newRow("all known") << Page{row("b", 3), row("a")} << "a:2.5 b:3";
        QTest::newRow("known with other values") << Page{row("a", 5, "ELSEWHERE")} << "a:2.5 b:3";
        QTest::newRow("one new among known") << Page{row("a", 5), row("c", 1), row("b", 3)} << "a:2.5 b:3 c:1";
        QTest::newRow("number differs in case") << Page{row("A", 1)} << "a:2.5 b:3 A:1";
        QTest::newRow("twice in the page: the last values") << Page{row("c", 1), row("c", 2)} << "a:2.5 b:3 c:2";
    }

    void onlyUnknownEventsAreStored()
    {
        QFETCH(QList<ParsedEarthquake>, page);
        Scene scene;
        scene.refresh({row("a"), row("b", 3)});
        const Instant first = *scene.repository->lastUpdated();
        scene.world.clock.advance(7min);
        scene.refresh(page);
        QTEST(scene.stored(), "stored");
        QVERIFY(!scene.repository->lastError());
        QVERIFY(*scene.repository->lastUpdated() == first + 7min);
        QVERIFY(scene.world.userDefaults.dateValue(savedKey) == first + 7min);
    }

    void anEventRemembersWhenItCame()
    {
        Scene scene;
        const Instant now = scene.world.clock.now();
        scene.refresh({row("a")});
        scene.world.clock.advance(7min);
        scene.refresh({row("a"), row("b")});
        const auto rows = scene.container.mainContext().fetch({});
        QVERIFY(rows.at(0).fetchedAt() == now);
        QVERIFY(rows.at(1).fetchedAt() == now + 7min);
    }

    void aFailedSaveLosesNothing()
    {
        Scene scene;
        scene.execute(refuseInserts);
        scene.refresh({row("a")});
        QVERIFY(message(scene.repository->lastError()).contains(QStringLiteral("refused by a trigger")));
        QCOMPARE(scene.stored(), QString());
        scene.execute("DROP TRIGGER refuse");
        // Pending events are known, so a page of them alone saves nothing.
        scene.refresh({row("a")});
        QCOMPARE(scene.stored(), QString());
        QVERIFY(scene.repository->lastUpdated());
        scene.refresh({row("a"), row("b")});
        QCOMPARE(scene.stored(), QStringLiteral("a:2.5 b:2.5"));
    }

    void aStoreThatCannotTellCountsAsEmpty()
    {
        Scene scene;
        scene.refresh({row("a")});
        const EarthquakeQuery &query = scene.container.earthquakes();
        scene.execute("ALTER TABLE earthquake RENAME TO hidden");
        scene.refresh({row("a", 4), row("b")});
        // Nothing tells yet that the pending "a" will be the stored one's row.
        QCOMPARE(query.count(), qsizetype(3));
        QVERIFY(message(scene.repository->lastError()).contains(QStringLiteral("store.sqlite")));
        scene.execute("ALTER TABLE hidden RENAME TO earthquake");
        scene.refresh({row("c")});
        QCOMPARE(scene.stored(), QStringLiteral("a:4 b:2.5 c:2.5"));
        QCOMPARE(query.count(), qsizetype(3));
    }

    void lastUpdatedComesFromTheSavedDate_data()
    {
        QTest::addColumn<QVariant>("saved");
        QTest::addColumn<bool>("isTaken");
        const QDateTime date = QDateTime::fromMSecsSinceEpoch(1735689600123, Qt::UTC);
        QTest::newRow("never saved") << QVariant() << false;
        QTest::newRow("a date") << QVariant(date) << true;
        QTest::newRow("a text that looks like one") << QVariant(date.toString(Qt::ISODateWithMs)) << false;
        QTest::newRow("a number") << QVariant(1735689600123.0) << false;
    }

    void lastUpdatedComesFromTheSavedDate()
    {
        QFETCH(QVariant, saved);
        QFETCH(bool, isTaken);
        World world;
        world.userDefaults.values.insert(savedKey, saved);
        ModelContainer container({.isStoredInMemoryOnly = true});
        auto *source = new HeldSource;
        EarthquakeRepository repository(container.mainContext(), std::unique_ptr<EarthquakeDataSource>(source));
        QCOMPARE(source->fetches, 0);
        QCOMPARE(repository.lastUpdated(), isTaken ? std::optional(Instant(1735689600123ms)) : std::nullopt);
        repository.refresh();
        source->answer({});
        QVERIFY(world.userDefaults.dateValue(savedKey) == world.clock.now());
    }

    void theRepositoryMayDieAtItsLastAct()
    {
        Scene scene;
        const QFuture<void> ended = scene.repository->refresh(true);
        QObject::connect(scene.repository.get(), &EarthquakeRepository::isLoadingChanged, [&] {
            scene.told.clear();
            scene.repository.reset();
        });
        std::unique_ptr<QPromise<HeldSource::Rows>> promise = std::move(scene.source->promise);
        promise->addResult(HeldSource::Rows{row("a")});
        promise->finish();
        QVERIFY(ended.isFinished() && !ended.isCanceled());
        scene.world.clock.advance(2min);
        QCOMPARE(scene.world.clock.sleeping(), 0);
    }

    void theRepositoryMayDieWhileFetching_data()
    {
        QTest::addColumn<bool>("answers");
        QTest::newRow("the answer comes all the same") << true;
        QTest::newRow("the source gives up as it goes") << false;
    }

    void theRepositoryMayDieWhileFetching()
    {
        QFETCH(bool, answers);
        Scene scene;
        const QFuture<void> ended = scene.repository->refresh();
        scene.told.clear();
        std::unique_ptr<QPromise<HeldSource::Rows>> promise;
        if (answers)
            promise = std::move(scene.source->promise);
        scene.repository.reset();
        if (promise) {
            promise->addResult(HeldSource::Rows{row("a")});
            promise->finish();
        }
        QVERIFY(ended.isFinished());
        QCOMPARE(scene.log(), QString());
        QCOMPARE(scene.stored(), QString());
    }

    void theSecondWindowFindsTheFirstOnesRows()
    {
        Scene scene;
        auto *otherSource = new HeldSource;
        EarthquakeRepository other(scene.container.mainContext(), std::unique_ptr<EarthquakeDataSource>(otherSource));
        scene.repository->refresh();
        other.refresh();
        QSignalSpy saves(&scene.container, &ModelContainer::didSave);
        scene.source->answer({row("a")});
        otherSource->answer({row("a", 4)});
        QCOMPARE(saves.count(), 1);
        QCOMPARE(scene.stored(), QStringLiteral("a:2.5"));
    }

    void theCountdownGoesToZeroBySeconds()
    {
        Scene scene;
        scene.refresh({}, true);
        QStringList expected;
        for (int left = 59; left >= 0; --left)
            expected.append(QString::number(left));
        expected += {QStringLiteral("cool"), QStringLiteral("0")};
        scene.told.clear();
        scene.world.clock.advance(59s);
        QVERIFY(scene.repository->isCoolingDown());
        QCOMPARE(scene.repository->cooldownRemainingSeconds(), qint64(1));
        scene.world.clock.advance(1s);
        QCOMPARE(scene.told, expected);
        scene.world.clock.advance(5min);
        QCOMPARE(scene.told, expected);
    }

    void anAutomaticRefreshLeavesTheCountdownAlone()
    {
        Scene scene;
        scene.refresh({}, true);
        scene.world.clock.advance(10s);
        scene.told.clear();
        scene.refresh({});
        scene.world.clock.advance(1s);
        QCOMPARE(scene.log(), QStringLiteral("loading, no error, updated again, idle, 49"));
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

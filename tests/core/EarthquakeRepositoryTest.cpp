// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Repositories/EarthquakeRepository.h"
#include "StoreScene.h"
#include "Support/Table.h"

#include <QPromise>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
const QString savedKey = u"lastUpdatedEarthquakes"_s;

ParsedEarthquake quake(const QString &eventID, double magnitude = 2.5)
{
    return testRow(eventID, Instant(1735689600s), magnitude);
}

/// A repository with a record of what its observers were told.
struct Scene : StoreScene
{
    Scene()
    {
        const auto log = [this](void (EarthquakeRepository::*changed)(), auto text) {
            QObject::connect(&repository, changed, &repository, [this, text] { told.append(text()); });
        };
        log(&EarthquakeRepository::isLoadingChanged,
            [this] { return repository.isLoading() ? u"loading"_s : u"idle"_s; });
        log(&EarthquakeRepository::lastErrorChanged, [this] { return error().section(u": "_s, -1); });
        log(&EarthquakeRepository::lastUpdatedChanged, [] { return u"updated"_s; });
        log(&EarthquakeRepository::isCoolingDownChanged,
            [this] { return repository.isCoolingDown() ? u"cooling"_s : u"cool"_s; });
        log(&EarthquakeRepository::cooldownRemainingSecondsChanged,
            [this] { return QString::number(repository.cooldownRemainingSeconds()); });
    }

    void refresh(const QList<ParsedEarthquake> &rows, bool startsCooldown = false)
    {
        source->rows = rows;
        repository.refresh(startsCooldown);
    }

    QString error() const
    {
        try {
            if (repository.lastError())
                std::rethrow_exception(repository.lastError());
            return u"no error"_s;
        } catch (const std::exception &caught) {
            return QString::fromUtf8(caught.what());
        }
    }

    /// Events with their magnitudes.
    QString stored()
    {
        QStringList rows;
        for (const Earthquake &earthquake : ModelContext(container).fetch({}))
            rows.append(earthquake.eventID() + u':' + QString::number(earthquake.magnitude()));
        return rows.join(u' ');
    }

    QString log() const { return told.join(u", "_s); }

    QStringList told;
};
}

class EarthquakeRepositoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void observersAreToldInOrder_data()
    {
        const Table<QByteArray, bool, QString> row;
        row("success", "", false, "loading, updated, idle");
        row("manual success", "", true, "loading, updated, 60, cooling, idle");
        row("fetch fails", "fetch", true, "loading, the source fails, 60, cooling, idle");
        row("source throws", "throw", true, "loading, the source throws, 60, cooling, idle");
        row("source gives up", "abandon", false, "loading, operation abandoned, idle");
        row("save fails", "save", false, "loading, refused by a trigger, idle");
    }

    void observersAreToldInOrder()
    {
        const auto [fails, startsCooldown, expected] = Table<QByteArray, bool, QString>::current();
        Scene scene;
        if (fails == "save")
            scene.execute(refuseInserts);
        scene.source->rows = {quake(u"a"_s)};
        scene.source->fails = fails == "fetch";
        scene.source->throws = fails == "throw";
        scene.source->holdsAnswers = true;
        const QFuture<void> ended = scene.repository.refresh(startsCooldown);
        QCOMPARE(ended.isFinished(), !scene.source->open);
        if (fails == "abandon")
            scene.source->open.reset();
        else if (scene.source->open)
            scene.source->release();
        QVERIFY(ended.isFinished());
        QCOMPARE(scene.log().remove(u", no error"_s), expected);
        QCOMPARE(scene.world.userDefaults.writes, fails.isEmpty() ? QStringList{savedKey} : QStringList{});
    }

    void aSecondRefreshIsDropped()
    {
        Scene scene;
        scene.source->holdsAnswers = true;
        scene.repository.refresh();
        scene.told.clear();
        QVERIFY(scene.repository.refresh(true).isFinished());
        QCOMPARE(scene.source->fetches, 1);
        QCOMPARE(scene.log(), QString());
        scene.source->release();
        QVERIFY(!scene.repository.isCoolingDown());
    }

    void onlyUnknownEventsAreStored_data()
    {
        const Table<QList<ParsedEarthquake>, QString> row;
        row("all known", {quake(u"b"_s, 3), quake(u"a"_s)}, "a:2.5 b:3");
        row("one new among known", {quake(u"a"_s, 5), quake(u"c"_s, 1), quake(u"b"_s, 3)}, "a:2.5 b:3 c:1");
        row("number differs in case", {quake(u"A"_s, 1)}, "a:2.5 b:3 A:1");
        row("twice in the page: the last values", {quake(u"c"_s, 1), quake(u"c"_s, 2)}, "a:2.5 b:3 c:2");
    }

    void onlyUnknownEventsAreStored()
    {
        const auto [page, expected] = Table<QList<ParsedEarthquake>, QString>::current();
        Scene scene;
        scene.refresh({quake(u"a"_s), quake(u"b"_s, 3)});
        const Instant first = *scene.repository.lastUpdated();
        scene.world.clock.advance(7min);
        scene.refresh(page);
        QCOMPARE(scene.stored(), expected);
        QVERIFY(scene.repository.lastUpdated() == first + 7min);
        QVERIFY(EarthquakeRepository(scene.context).lastUpdated() == first + 7min);
        const std::vector<Earthquake> rows = ModelContext(scene.container).fetch({});
        QVERIFY(rows.front().fetchedAt() == first);
        QVERIFY(rows.size() == 2 || rows.back().fetchedAt() == first + 7min);
    }

    void aFailedSaveLosesNothing()
    {
        Scene scene;
        scene.execute(refuseInserts);
        scene.refresh({quake(u"a"_s)});
        scene.execute(allowInserts);
        // Pending events are known, so a page of them alone saves nothing.
        scene.refresh({quake(u"a"_s)});
        QCOMPARE(scene.stored(), QString());
        QVERIFY(scene.repository.lastUpdated());
        scene.refresh({quake(u"a"_s), quake(u"b"_s)});
        QCOMPARE(scene.stored(), u"a:2.5 b:2.5"_s);
    }

    void aStoreThatCannotTellCountsAsEmpty()
    {
        Scene scene;
        scene.refresh({quake(u"a"_s)});
        const EarthquakeQuery &query = scene.container.earthquakes();
        scene.execute("ALTER TABLE earthquake RENAME TO hidden");
        scene.refresh({quake(u"a"_s, 4), quake(u"b"_s)});
        // Nothing tells yet that the pending "a" will be the stored one's row.
        QCOMPARE(query.count(), qsizetype(3));
        QVERIFY2(scene.error().contains(u"store.sqlite"), qPrintable(scene.error()));
        scene.execute("ALTER TABLE hidden RENAME TO earthquake");
        scene.refresh({quake(u"c"_s)});
        QCOMPARE(scene.stored(), u"a:4 b:2.5 c:2.5"_s);
        QCOMPARE(query.count(), qsizetype(3));
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
        QCOMPARE(scene.log(), u"loading, no error, updated, idle, 49"_s);
        scene.world.clock.advance(48s);
        QVERIFY(scene.repository.isCoolingDown());
        scene.world.clock.advance(1s);
        QVERIFY2(scene.log().endsWith(u", 2, 1, 0, cool, 0"_s), qPrintable(scene.log()));
        QCOMPARE(scene.world.clock.sleeping(), 0);
    }
};

QTEST_GUILESS_MAIN(EarthquakeRepositoryTest)
#include "EarthquakeRepositoryTest.moc"

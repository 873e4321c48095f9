// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/EarthquakeQuery.h"
#include "Platform/Text/TextSearch.h"
#include "StoreScene.h"
#include "Support/Table.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
struct Store : StoreScene
{
    QString shown() { return eventIDs(container.earthquakes().earthquakes()); }
};

std::vector<PersistentIdentifier> identities(std::span<const Earthquake> earthquakes)
{
    std::vector<PersistentIdentifier> ids;
    for (const Earthquake &earthquake : earthquakes)
        ids.push_back(earthquake.id());
    return ids;
}
}

class EarthquakeQueryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eventsStandNewestFirst()
    {
        Store store;
        store.save({testEarthquake(u"a"_s, 20), testEarthquake(u"b"_s, 10), testEarthquake(u"c"_s, 20)});
        store.context.insert(testEarthquake(u"pending"_s, 15));
        QCOMPARE(store.shown(), u"c a pending b"_s);
        store.save({testEarthquake(u"e"_s, 20), testEarthquake(u"f"_s, 40), testEarthquake(u"g"_s, 5)});
        QCOMPARE(store.shown(), u"f e c a pending b g"_s);
        const auto since = [&](qint64 second) {
            return store.container.earthquakes().countSince(Instant(std::chrono::seconds(second)));
        };
        QCOMPARE(since(41), qsizetype(0));
        QCOMPARE(since(20), qsizetype(4));
        QCOMPARE(since(-1), qsizetype(7));
    }

    void flatArraysStandBesideTheEvents()
    {
        Store store;
        store.save({testEarthquake(u"a"_s, 10, 1.9, u"LA PEÑA"_s)});
        const EarthquakeQuery &query = store.container.earthquakes();
        store.save({testEarthquake(u"b"_s, 30, 2.0, u"Güímar"_s), testEarthquake(u"c"_s, 20, 7.0, u"LA PEÑA"_s)});
        QCOMPARE(store.shown(), u"b c a"_s);
        for (qsizetype i = 0; i < 3; ++i)
            QVERIFY(query.dates()[size_t(i)] == query.at(i).date());
        using Band = MagnitudeCategory::Band;
        QVERIFY(std::ranges::equal(query.bands(), std::vector{Band::low, Band::major, Band::micro}));
        const auto folded = [&](size_t i) { return query.foldedLocations().at(query.locationIndexes()[i]); };
        QCOMPARE(folded(0), foldedForSearch(u"GUIMAR"_s));
        QCOMPARE(folded(1), foldedForSearch(u"la pena"_s));
        QCOMPARE(query.locationIndexes()[1], query.locationIndexes()[2]);
    }

    void rowsOfAnotherProcessArePickedUp()
    {
        Store store;
        store.save({testEarthquake(u"a"_s, 10)});
        int changes = 0;
        connect(&store.container.earthquakes(), &EarthquakeQuery::changed, [&] { ++changes; });
        ModelContainer elsewhere({.path = store.container.location()});
        Store::save(elsewhere.mainContext(), {testEarthquake(u"b"_s, 20), testEarthquake(u"c"_s, 5)});
        store.save({testEarthquake(u"d"_s, 15)});
        Store::save(elsewhere.mainContext(), {testEarthquake(u"e"_s, 30), testEarthquake(u"d"_s, 25)});
        QCOMPARE(store.shown(), u"d a"_s);
        store.container.refreshFromStore();
        QCOMPARE(store.shown(), u"e d b a c"_s);
        store.container.refreshFromStore();
        QCOMPARE(changes, 2);
    }

    void anUnreadableStoreIsTriedAgain()
    {
        Store store;
        store.save({testEarthquake(u"a"_s, 10)});
        store.execute("ALTER TABLE earthquake RENAME TO hidden");
        QCOMPARE(store.shown(), QString());
        store.execute("ALTER TABLE hidden RENAME TO earthquake");
        store.container.refreshFromStore();
        QCOMPARE(store.shown(), u"a"_s);
    }

    void anyHistoryOfSavesEndsAsAFetchDoes_data()
    {
        const Table<quint32> row;
        for (quint32 seed = 1; seed <= 20; ++seed)
            row.unnamed(seed);
    }

    void anyHistoryOfSavesEndsAsAFetchDoes()
    {
        const auto [seed] = Table<quint32>::current();
        QRandomGenerator random(seed);
        Store store;
        ModelContext other(store.container);
        EarthquakeQuery &query = store.container.earthquakes();
        // What a list that follows the changes one by one would show.
        std::vector<PersistentIdentifier> followed;
        connect(&query, &EarthquakeQuery::changed, [&](const EarthquakeQuery::Change &change) {
            for (auto index = change.removed.rbegin(); index != change.removed.rend(); ++index)
                followed.erase(followed.begin() + *index);
            for (const qsizetype index : change.inserted)
                followed.insert(followed.begin() + index, query.at(index).id());
        });
        qint64 second = 0;
        for (int step = 0; step < 25; ++step) {
            ModelContext &context = random.bounded(3) == 0 ? other : store.context;
            for (int i = random.bounded(4); i > 0; --i) {
                // No date twice, so that there is one right order.
                const qint64 date = random.bounded(2) == 0 ? ++second : -++second;
                context.insert(testEarthquake(u"q%1"_s.arg(random.bounded(30)), date));
            }
            const bool fails = &context == &store.context && context.hasChanges() && random.bounded(3) == 0;
            if (fails) {
                store.execute(refuseInserts);
                QVERIFY_EXCEPTION_THROWN(context.save(), StoreError);
                store.execute(allowInserts);
            } else {
                context.save();
            }
            query.refreshFromStore();
            const auto fetched = store.context.fetch({.sort = FetchDescriptor::Sort::dateReverse});
            QCOMPARE(store.shown(), eventIDs(fetched));
            QVERIFY(std::ranges::equal(query.earthquakes(), fetched));
            QCOMPARE(followed, identities(query.earthquakes()));
        }
    }
};

QTEST_GUILESS_MAIN(EarthquakeQueryTest)
#include "EarthquakeQueryTest.moc"

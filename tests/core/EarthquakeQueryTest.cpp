// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Platform/Text/TextSearch.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QRandomGenerator>
#include <QTest>

#include <SQLiteCpp/Database.h>

#include <sqlite3.h>

#include <algorithm>
#include <functional>
#include <utility>

namespace {
Earthquake quake(const char *eventID, qint64 second, double magnitude = 2.5)
{
    return testEarthquake(QString::fromLatin1(eventID), second, magnitude);
}

/// A store with its live query, and the means to make its saves fail.
struct Store
{
    World world;
    ModelContainer container{{.path = world.folder.filePath(QStringLiteral("store.sqlite"))}};
    ModelContext &context = container.mainContext();

    void save(std::initializer_list<Earthquake> earthquakes) { save(context, earthquakes); }

    void save(ModelContext &into, std::initializer_list<Earthquake> earthquakes)
    {
        for (const Earthquake &earthquake : earthquakes)
            into.insert(earthquake);
        try {
            into.save();
        } catch (const StoreError &) {
        }
    }

    void execute(const char *sql) const
    {
        SQLite::Database(container.location().toStdString(), SQLite::OPEN_READWRITE).exec(sql);
    }
    void refuseSaves() const
    {
        execute("CREATE TRIGGER refuse BEFORE INSERT ON earthquake BEGIN SELECT RAISE(ABORT, 'refused'); END");
    }
    void allowSaves() const { execute("DROP TRIGGER refuse"); }
};

/// Watches the connections opened while it lives, to act between two reads of one of them.
class AfterRead
{
public:
    explicit AfterRead(const QByteArray &statement)
    {
        s_statement = statement;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(&AfterRead::watch));
    }
    ~AfterRead()
    {
        sqlite3_reset_auto_extension();
        s_call = nullptr;
    }
    Q_DISABLE_COPY_MOVE(AfterRead)

    /// Calls `call`, once, at the end of the next statement that contains the text.
    void arm(std::function<void()> call) { s_call = std::move(call); }

private:
    static int watch(sqlite3 *connection, char **, const void *)
    {
        return sqlite3_trace_v2(connection, SQLITE_TRACE_PROFILE, &AfterRead::ended, nullptr);
    }

    static int ended(unsigned, void *, void *statement, void *)
    {
        if (QByteArray(sqlite3_sql(static_cast<sqlite3_stmt *>(statement))).contains(s_statement))
            if (const auto call = std::exchange(s_call, nullptr))
                call();
        return 0;
    }

    static inline QByteArray s_statement;
    static inline std::function<void()> s_call;
};
}

class EarthquakeQueryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eventsStandNewestFirst()
    {
        Store store;
        store.save({quake("a", 20), quake("b", 10), quake("c", 30), quake("d", 20)});
        const EarthquakeQuery &query = store.container.earthquakes();
        QCOMPARE(eventIDs(query.earthquakes()), QStringLiteral("c d a b"));
        store.save({quake("e", 20), quake("f", 40), quake("g", 5)});
        QCOMPARE(eventIDs(query.earthquakes()), QStringLiteral("f c e d a b g"));
        QCOMPARE(&store.container.earthquakes(), &query);
    }

    void flatArraysStandBesideTheEvents()
    {
        Store store;
        store.save({testEarthquake(QStringLiteral("a"), 10, 1.9, QStringLiteral("LA PEÑA"))});
        const EarthquakeQuery &query = store.container.earthquakes();
        store.save({testEarthquake(QStringLiteral("b"), 30, 2.0, QStringLiteral("Güímar")),
                    testEarthquake(QStringLiteral("c"), 20, 7.0, QStringLiteral("LA PEÑA"))});
        QCOMPARE(eventIDs(query.earthquakes()), QStringLiteral("b c a"));
        for (qsizetype i = 0; i < 3; ++i)
            QVERIFY(query.dates()[size_t(i)] == query.at(i).date());
        using Band = MagnitudeCategory::Band;
        QVERIFY(std::ranges::equal(query.bands(), std::vector{Band::low, Band::major, Band::micro}));
        const auto folded = [&](size_t i) { return query.foldedLocations().at(query.locationIndexes()[i]); };
        QCOMPARE(folded(0), foldedForSearch(QStringLiteral("GUIMAR")));
        QCOMPARE(folded(1), foldedForSearch(QStringLiteral("la pena")));
        QCOMPARE(query.locationIndexes()[1], query.locationIndexes()[2]);
    }

    void eventsSinceACutoffAreCounted()
    {
        Store store;
        store.save({quake("a", 30), quake("b", 20), quake("c", 20), quake("d", 0)});
        const auto since = [&](qint64 second) {
            return store.container.earthquakes().countSince(Instant(std::chrono::seconds(second)));
        };
        QCOMPARE(since(31), qsizetype(0));
        QCOMPARE(since(20), qsizetype(3));
        QCOMPARE(since(-1), qsizetype(4));
    }

    void whatWasPendingBeforeIsThere()
    {
        World world;
        ModelContainer container({.isStoredInMemoryOnly = true});
        container.mainContext().insert(quake("a", 10));
        QCOMPARE(eventIDs(container.earthquakes().earthquakes()), QStringLiteral("a"));
    }

    void rowsOfAnotherProcessArePickedUp()
    {
        Store store;
        store.save({quake("a", 10)});
        EarthquakeQuery &query = store.container.earthquakes();
        int changes = 0;
        connect(&query, &EarthquakeQuery::changed, [&] { ++changes; });
        ModelContainer elsewhere({.path = store.container.location()});
        store.save(elsewhere.mainContext(), {quake("b", 20), quake("c", 5)});
        store.save({quake("d", 15)});
        store.save(elsewhere.mainContext(), {quake("e", 30), quake("d", 25)});
        QCOMPARE(eventIDs(query.earthquakes()), QStringLiteral("d a"));
        store.container.refreshFromStore();
        QCOMPARE(eventIDs(query.earthquakes()), QStringLiteral("e d b a c"));
        QCOMPARE(changes, 2);
        store.container.refreshFromStore();
        QCOMPARE(changes, 2);
    }

    void rowsThatComeBetweenTwoReadsAreNotLost_data()
    {
        const Table<QByteArray> row;
        row("after the rows", QByteArray("WHERE id >"));
        row("after the last row's number", QByteArray("max(id)"));
        row("after the version", QByteArray("data_version"));
    }

    void rowsThatComeBetweenTwoReadsAreNotLost()
    {
        const auto [read] = Table<QByteArray>::current();
        AfterRead afterRead(read);
        Store store;
        store.save({quake("a", 10)});
        EarthquakeQuery &query = store.container.earthquakes();
        ModelContainer elsewhere({.path = store.container.location()});
        store.save(elsewhere.mainContext(), {quake("b", 20)});
        bool hasCome = false;
        afterRead.arm([&] {
            hasCome = true;
            store.save(elsewhere.mainContext(), {quake("c", 30)});
        });
        query.refreshFromStore();
        QVERIFY(hasCome);
        query.refreshFromStore();
        QCOMPARE(eventIDs(query.earthquakes()), QStringLiteral("c b a"));
    }

    void anUnreadableStoreIsTriedAgain()
    {
        Store store;
        store.save({quake("a", 10)});
        store.execute("ALTER TABLE earthquake RENAME TO hidden");
        EarthquakeQuery &query = store.container.earthquakes();
        QVERIFY(query.isEmpty());
        store.execute("ALTER TABLE hidden RENAME TO earthquake");
        query.refreshFromStore();
        QCOMPARE(eventIDs(query.earthquakes()), QStringLiteral("a"));
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
        std::vector<PersistentIdentifier> shown;
        connect(&query, &EarthquakeQuery::changed,
                [&](const EarthquakeQuery::Change &change) { shown = replayed(shown, change, query); });
        qint64 second = 0;
        for (int step = 0; step < 25; ++step) {
            ModelContext &context = random.bounded(3) == 0 ? other : store.context;
            const bool fails = &context == &store.context && random.bounded(3) == 0;
            for (int i = random.bounded(4); i > 0; --i) {
                // No date twice, so that there is one right order.
                const qint64 date = random.bounded(2) == 0 ? ++second : -++second;
                context.insert(testEarthquake(QStringLiteral("q%1").arg(random.bounded(30)), date));
            }
            if (fails)
                store.refuseSaves();
            store.save(context, {});
            if (fails)
                store.allowSaves();
            query.refreshFromStore();
            const auto fetched = store.context.fetch({.sort = FetchDescriptor::Sort::dateReverse});
            QCOMPARE(eventIDs(query.earthquakes()), eventIDs(fetched));
            QVERIFY(std::ranges::equal(query.earthquakes(), fetched));
            QCOMPARE(shown, identities(query.earthquakes()));
        }
    }

private:
    static std::vector<PersistentIdentifier> identities(std::span<const Earthquake> earthquakes)
    {
        std::vector<PersistentIdentifier> ids;
        for (const Earthquake &earthquake : earthquakes)
            ids.push_back(earthquake.id());
        return ids;
    }

    /// What a list that follows the changes one by one would show.
    static std::vector<PersistentIdentifier> replayed(std::vector<PersistentIdentifier> shown,
                                                      const EarthquakeQuery::Change &change,
                                                      const EarthquakeQuery &query)
    {
        for (auto index = change.removed.rbegin(); index != change.removed.rend(); ++index)
            shown.erase(shown.begin() + *index);
        for (const qsizetype index : change.inserted)
            shown.insert(shown.begin() + index, query.at(index).id());
        return shown;
    }
};

QTEST_GUILESS_MAIN(EarthquakeQueryTest)
#include "EarthquakeQueryTest.moc"

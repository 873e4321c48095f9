// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"

#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Models/Region.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Support/World.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <cstdlib>
#include <optional>

#include <malloc.h>

namespace {
constexpr int rowsOfAPage = 1700;
constexpr int eventsOfAYear = 60'000;
constexpr int placeNames = 3000;
constexpr auto step = std::chrono::milliseconds(std::chrono::hours(24 * 365)) / eventsOfAYear;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// The year and five letters, scattered within the year as the institute's are.
QString eventID(int number)
{
    QString id = QStringLiteral("es%1").arg(2000 + number / eventsOfAYear);
    constexpr int words = 26 * 26 * 26 * 26 * 26;
    constexpr qint64 stride = 7'654'321;
    qint64 word = number % eventsOfAYear * stride % words;
    for (int letter = 0; letter < 5; ++letter, word /= 26)
        id.append(QLatin1Char(char('a' + word % 26)));
    return id;
}

/// The event of a number: the higher, the newer.
ParsedEarthquake parsed(int number)
{
    return {.eventID = eventID(number),
            .date = Instant(std::chrono::sys_days{std::chrono::year{2000} / 1 / 1}) + number * step,
            .latitude = 27.5 + number % 200 * 0.01,
            .longitude = -18.5 + number % 500 * 0.01,
            .depth = number % 40 * 1.0,
            .magnitude = number % 50 * 0.1,
            .magnitudeType = QStringLiteral("mbLg"),
            .maxIntensity = number % 20 == 0 ? std::optional(QStringLiteral("II")) : std::nullopt,
            .location = QStringLiteral("SW VILLA DE PUEBLO %1").arg(number % placeNames)};
}

QList<ParsedEarthquake> parsed(int begin, int end)
{
    QList<ParsedEarthquake> rows;
    for (int number = begin; number < end; ++number)
        rows.append(parsed(number));
    return rows;
}

void insert(ModelContext &context, const QList<ParsedEarthquake> &rows)
{
    for (const ParsedEarthquake &row : rows)
        context.insert({row.eventID, row.date, row.latitude, row.longitude, row.depth, row.magnitude, row.magnitudeType,
                        row.maxIntensity, row.location});
}

/// The yardstick of a save: the same rows into the same table by SQLite alone.
void insertBare(SQLite::Database &database, const QList<ParsedEarthquake> &rows)
{
    SQLite::Transaction transaction(database);
    SQLite::Statement statement(database,
                                "INSERT INTO earthquake (eventID, date, latitude, longitude, depth, "
                                "magnitude, magnitudeType, maxIntensity, location, fetchedAt) "
                                "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    for (const ParsedEarthquake &row : rows) {
        const std::string texts[] = {row.eventID.toStdString(), row.magnitudeType.toStdString(),
                                     row.maxIntensity.value_or(QString()).toStdString(), row.location.toStdString()};
        const std::int64_t date = row.date.time_since_epoch().count();
        statement.bindNoCopy(1, texts[0]);
        statement.bind(2, date);
        statement.bind(3, row.latitude);
        statement.bind(4, row.longitude);
        statement.bind(5, row.depth);
        statement.bind(6, row.magnitude);
        statement.bindNoCopy(7, texts[1]);
        row.maxIntensity ? statement.bindNoCopy(8, texts[2]) : statement.bind(8);
        statement.bindNoCopy(9, texts[3]);
        statement.bind(10, date);
        statement.exec();
        statement.reset();
    }
    transaction.commit();
}

SQLite::Database openBare(const QString &path)
{
    SQLite::Database database(path.toStdString(), SQLite::OPEN_READWRITE);
    database.exec("PRAGMA synchronous = FULL");
    return database;
}

/// A store of `count` events in a file of its own.
struct FilledStore
{
    FilledStore(const World &world, const char *name, int count)
        : path(world.folder.filePath(QString::fromLatin1(name)))
        , container({.path = path})
    {
        SQLite::Database database = openBare(path);
        for (int begin = 0; begin < count; begin += 100'000)
            insertBare(database, parsed(begin, std::min(begin + 100'000, count)));
    }

    QString path;
    ModelContainer container;
};

/// Answers at once with the same rows.
class ReadySource : public EarthquakeDataSource
{
public:
    explicit ReadySource(const QList<ParsedEarthquake> &rows)
        : m_rows(rows)
    {
    }
    const Region &region() const override { return Region::canaryIslands(); }
    QFuture<QList<ParsedEarthquake>> fetchEarthquakes() override { return QtFuture::makeReadyFuture(m_rows); }

private:
    QList<ParsedEarthquake> m_rows;
};

void savingAPage(Budgets &budgets, const World &world)
{
    constexpr int stored = 100'000;
    FilledStore store(world, "save.sqlite", stored);
    const FilledStore bare(world, "bare.sqlite", stored);
    SQLite::Database database = openBare(bare.path);
    int saved = stored;
    int savedBare = stored;
    budgets.atMost(
        2, "store 1,700 new events among 100,000 / bare SQLite",
        [&] {
            insert(store.container.mainContext(), parsed(saved, saved + rowsOfAPage));
            store.container.mainContext().save();
            saved += rowsOfAPage;
        },
        [&] {
            insertBare(database, parsed(savedBare, savedBare + rowsOfAPage));
            savedBare += rowsOfAPage;
        });
}

void nothingNew(Budgets &budgets, FilledStore &large, int largeCount, const World &world)
{
    constexpr int smallCount = 1000;
    FilledStore small(world, "small.sqlite", smallCount);
    const auto repository = [](FilledStore &store, int count) {
        auto source = std::make_unique<ReadySource>(parsed(count - smallCount, count));
        return std::make_unique<EarthquakeRepository>(store.container.mainContext(), std::move(source));
    };
    const auto ofLarge = repository(large, largeCount);
    const auto ofSmall = repository(small, smallCount);
    budgets.atMost(
        1.5, "refresh with nothing new, 1,000,000 stored / 1,000 stored", [&] { ofLarge->refresh(); },
        [&] { ofSmall->refresh(); });
    require(!ofLarge->lastError() && large.container.mainContext().fetchCount({}) == largeCount);
}

double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}

void liveQuery(Budgets &budgets, FilledStore &store, int count)
{
    std::optional<EarthquakeQuery> query;
    double loadMs = Budgets::milliseconds([&] { query.emplace(store.container); });
    for (int run = 0; run < 2; ++run) {
        query.reset();
        loadMs = std::min(loadMs, Budgets::milliseconds([&] { query.emplace(store.container); }));
    }
    query.reset();
    const double heapBefore = heapBytes();
    query.emplace(store.container);
    budgets.countAtMost(200, "heap bytes of an event in the live query, 1,000,000 stored",
                        (heapBytes() - heapBefore) / count);
    require(query->count() == count);

    constexpr int added = 50;
    ModelContext &context = store.container.mainContext();
    double addMs = loadMs;
    int next = count;
    for (int run = 0; run < 9; ++run, next += added) {
        insert(context, parsed(next, next + added));
        addMs = std::min(addMs, Budgets::milliseconds([&] { context.save(); }));
    }
    require(query->count() == next);
    budgets.atMost(0.01, "save 50 events, live query of 1,000,000 / its first load", addMs, loadMs);
}
}

void storeBudgets(Budgets &budgets)
{
    World world;
    savingAPage(budgets, world);
    constexpr int million = 1'000'000;
    FilledStore store(world, "million.sqlite", million);
    nothingNew(budgets, store, million, world);
    historyBudgets(budgets, world, store.path, store.container);
    liveQuery(budgets, store, million);
}

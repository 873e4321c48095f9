// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"
#include "FilledStore.h"

#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Models/Region.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "Support/World.h"

#include <cstdlib>
#include <optional>

namespace {
constexpr int rowsOfAPage = 1700;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void insert(ModelContext &context, const QList<ParsedEarthquake> &rows)
{
    for (const ParsedEarthquake &row : rows)
        context.insert({row.eventID, row.date, row.latitude, row.longitude, row.depth, row.magnitude, row.magnitudeType,
                        row.maxIntensity, row.location});
}

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
    FilledStore store(world.folder.filePath(QStringLiteral("save.sqlite")), stored);
    const FilledStore bare(world.folder.filePath(QStringLiteral("bare.sqlite")), stored);
    SQLite::Database database = openBare(bare.path);
    int saved = stored;
    int savedBare = stored;
    budgets.atMost(
        2, "store 1,700 new events among 100,000 / bare SQLite",
        [&] {
            insert(store.container.mainContext(), storedEvents(saved, saved + rowsOfAPage));
            store.container.mainContext().save();
            saved += rowsOfAPage;
        },
        [&] {
            insertBare(database, storedEvents(savedBare, savedBare + rowsOfAPage));
            savedBare += rowsOfAPage;
        });
}

void nothingNew(Budgets &budgets, FilledStore &large, int largeCount, const World &world)
{
    constexpr int smallCount = 1000;
    FilledStore small(world.folder.filePath(QStringLiteral("small.sqlite")), smallCount);
    const auto repository = [](FilledStore &store, int count) {
        auto source = std::make_unique<ReadySource>(storedEvents(count - smallCount, count));
        return std::make_unique<EarthquakeRepository>(store.container.mainContext(), std::move(source));
    };
    const auto ofLarge = repository(large, largeCount);
    const auto ofSmall = repository(small, smallCount);
    budgets.atMost(
        1.5, "refresh with nothing new, 1,000,000 stored / 1,000 stored", [&] { ofLarge->refresh(); },
        [&] { ofSmall->refresh(); });
    require(!ofLarge->lastError() && large.container.mainContext().fetchCount({}) == largeCount);
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
    const double heapBefore = Budgets::heapBytes();
    query.emplace(store.container);
    budgets.countAtMost(200, "heap bytes of an event in the live query, 1,000,000 stored",
                        (Budgets::heapBytes() - heapBefore) / count);
    require(query->count() == count);

    constexpr int added = 50;
    ModelContext &context = store.container.mainContext();
    double addMs = loadMs;
    int next = count;
    for (int run = 0; run < 9; ++run, next += added) {
        insert(context, storedEvents(next, next + added));
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
    FilledStore store(world.folder.filePath(QStringLiteral("million.sqlite")), million);
    nothingNew(budgets, store, million, world);
    historyBudgets(budgets, world, store.path, store.container);
    liveQuery(budgets, store, million);
}

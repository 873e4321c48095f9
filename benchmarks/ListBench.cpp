// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"
#include "FilledStore.h"

#include "Core/Persistence/EarthquakeQuery.h"
#include "Support/World.h"
#include "iOS/Ultimos/RecentEarthquakes.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {
constexpr int events = 1'000'000;

/// By all threads.
std::atomic<qint64> allocations = 0;

/// The folded place names of all events in one buffer.
QByteArray allNames(const EarthquakeQuery &query)
{
    QByteArray names;
    for (const quint32 index : query.locationIndexes())
        names.append(query.foldedLocations()[index]).append('\n');
    return names;
}
}

void *operator new(std::size_t size)
{
    ++allocations;
    if (void *const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

void listBudgets(Budgets &budgets)
{
    const World world;
    FilledStore store(world.folder.filePath(QStringLiteral("list.sqlite")), events, Pace::month);
    const EarthquakeQuery &query = store.container.earthquakes();
    const RecentEarthquakes::Cutoffs cutoffs(storedEvent(events, Pace::month).date);
    RecentEarthquakes list;
    list.evaluate(query, {}, cutoffs);
    const QByteArray names = allNames(query);
    if (list.places().size() != events || !names.contains("pueblo"))
        std::abort();

    // Each keystroke asks for another text, so that nothing is known from the one before.
    bool isOdd = false;
    const auto type = [&](const char *one, const char *other) {
        isOdd = !isOdd;
        list.evaluate(query, {.foldedLocation = isOdd ? one : other}, cutoffs);
    };
    const auto sweep = [&] {
        if (::memmem(names.constData(), size_t(names.size()), "garachico", 9))
            std::abort();
    };
    budgets.atMost(
        1, "keystroke: 1,000,000 events, none passes : memmem over their names",
        [&] { type("garachico", "garachica"); }, sweep);
    budgets.atMost(
        1, "keystroke: 1,000,000 events, all pass : memmem over their names", [&] { type("pueb", "puebl"); }, sweep);
    const qint64 before = allocations;
    type("villa", "vill");
    budgets.countAtMost(100, "keystroke: allocations", double(allocations.load() - before));
}

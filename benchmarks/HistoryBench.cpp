// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"

#include "Core/Persistence/ModelContext.h"
#include "Support/World.h"
#include "iOS/Historico/HistoricoScreen.h"

#include <QCoreApplication>

#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include <string.h>

namespace {
constexpr size_t many = 50'000;
constexpr int runs = 9;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// The shortest of several runs, each after a preparation that is not measured.
double best(const Budgets::Work &prepare, const Budgets::Work &work)
{
    double shortest = 0;
    for (int run = 0; run < runs; ++run) {
        prepare();
        const double taken = Budgets::milliseconds(work);
        shortest = run == 0 ? taken : std::min(shortest, taken);
    }
    return shortest;
}

double best(const Budgets::Work &work)
{
    return best([] {}, work);
}

/// The place names of what the history holds, one behind the other.
std::string placeNames(const HistoricoViewModel &model)
{
    std::string names;
    for (const Earthquake &earthquake : model.loadedEarthquakes())
        names += earthquake.location().toLower().toStdString() + '\n';
    return names;
}
}

void historyBudgets(Budgets &budgets, World &world, const QString &path, ModelContainer &container)
{
    int argc = 1;
    char name[] = "orvalia_bench";
    char *argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    HistoricoScreen screen;
    screen.setProperty("container", QVariant::fromValue(&container));
    HistoricoViewModel &model = *screen.viewModel();
    ModelContext &context = container.mainContext();
    SQLite::Database bare(path.toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement count(bare, "SELECT count(*) FROM earthquake");
    const double countMs = best([&] {
        require(count.executeStep());
        count.reset();
    });

    const double firstPage = best([&] {
        model.onAppear(context);
        world.settle();
    });
    budgets.atMost(2, "history: first page of 1,000,000 shown : bare count of them", firstPage, countMs);
    const double years = best([&] { model.loadAvailableYears(context); });
    budgets.atMost(0.2, "history: years of 1,000,000 : bare count of them", years, countMs);
    require(screen.rows()->rowCount() == HistoricoViewModel::pageSize && !model.availableYears().empty());

    while (model.loadedEarthquakes().size() < many)
        model.loadMore();
    world.settle();
    const double nextPage = best([&] {
        screen.loadMore();
        world.settle();
    });
    budgets.atMost(2, "history: page after 50,000 shown : bare count of 1,000,000", nextPage, countMs);
    require(screen.rows()->rowCount() == int(many) + runs * HistoricoViewModel::pageSize);

    const std::string names = placeNames(model);
    const std::string absent = "no such place";
    const double sweepMs = best([&] { require(!memmem(names.data(), names.size(), absent.data(), absent.size())); });
    const auto search = [&](const char *text) {
        model.setSearchText(QLatin1String(text));
        world.clock.advance(std::chrono::milliseconds(300));
        world.settle();
    };
    const double narrowing = best([&] { search(""); }, [&] { search("pueblo 17"); });
    require(screen.rows()->rowCount() > 0 && screen.rows()->rowCount() < int(many) / 10);
    const double widening = best([&] { search("pueblo 17"); }, [&] { search(""); });
    // A sweep takes 0.15 ms where a frame may take 16.
    budgets.atMost(100, "history: search among 50,000 loaded : memmem over their places", narrowing, sweepMs);
    budgets.atMost(100, "history: search given up, 50,000 loaded : memmem", widening, sweepMs);
}

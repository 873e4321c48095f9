// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"
#include "LoopGaps.h"

#include <cstdio>
#include <cstring>
#include <optional>

namespace {
enum class Needs { nothing, display };

struct Area
{
    const char *name;
    void (*run)(Budgets &budgets);
    Needs needs = Needs::nothing;
};

constexpr Area areas[] = {
    {"parser", parserBudgets},
    {"store", storeBudgets},
    {"list", listBudgets},
    {"stats", statsBudgets},
    {"alerts", alertsBudgets},
    {"map", mapBudgets, Needs::display},
    {"network", networkBudgets, Needs::display},
    {"screen", screenBudgets, Needs::display},
};
}

/// Without an argument every area, with one the area of that name. Exit status 1 when a budget was missed, 2 when there
/// is no such area.
int main(int argc, char *argv[])
{
#ifndef NDEBUG
    std::puts("Built without optimisation: the figures say nothing. Configure with CMAKE_BUILD_TYPE=Release.");
#endif
    std::optional<LoopGaps> application;
    Budgets budgets;
    bool found = false;
    for (const Area &area : areas) {
        if (argc > 1 && std::strcmp(argv[1], area.name) != 0)
            continue;
        if (!found)
            Budgets::printHead();
        found = true;
        if (area.needs == Needs::display && !application)
            application.emplace(argc, argv);
        area.run(budgets);
    }
    if (!found)
        return 2;
    return budgets.allKept() ? 0 : 1;
}

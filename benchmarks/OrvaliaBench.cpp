// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"

#include <cstdio>
#include <cstring>

namespace {
struct Area
{
    const char *name;
    void (*run)(Budgets &budgets);
};

constexpr Area areas[] = {
    {"alerts", alertsBudgets}, {"map", mapBudgets},     {"parser", parserBudgets},
    {"stats", statsBudgets},   {"store", storeBudgets},
};
}

/// Without an argument every area, with one the area of that name. Exit status 1 when a budget was missed, 2 when there
/// is no such area.
int main(int argc, char *argv[])
{
#ifndef NDEBUG
    std::puts("Built without optimisation: the figures say nothing. Configure with CMAKE_BUILD_TYPE=Release.");
#endif
    Budgets budgets;
    bool found = false;
    for (const Area &area : areas) {
        if (argc > 1 && std::strcmp(argv[1], area.name) != 0)
            continue;
        found = true;
        area.run(budgets);
    }
    if (!found)
        return 2;
    return budgets.allKept() ? 0 : 1;
}

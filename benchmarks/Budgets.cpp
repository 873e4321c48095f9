// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace {
struct Times
{
    double work = 0;
    double yardstick = 0;
};

/// The shortest of several runs: cold caches and page faults only ever add time.
double bestMilliseconds(const Budgets::Work &work, int runs)
{
    double best = Budgets::milliseconds(work);
    for (int run = 1; run < runs; ++run)
        best = std::min(best, Budgets::milliseconds(work));
    return best;
}

/// One behind the other and not in turn: what the yardstick leaves of caches and heap is not the work's business.
Times measure(const Budgets::Work &work, const Budgets::Work &yardstick, int runs)
{
    return {bestMilliseconds(work, runs), bestMilliseconds(yardstick, runs)};
}
}

void Budgets::atMost(double limit, const char *name, const Work &work, const Work &yardstick, int runs)
{
    const Times times = measure(work, yardstick, runs);
    atMost(limit, name, times.work, times.yardstick);
}

void Budgets::timesFaster(double limit, const char *name, const Work &work, const Work &yardstick, int runs)
{
    const Times times = measure(work, yardstick, runs);
    const double ratio = times.yardstick / times.work;
    print(name, times.work, times.yardstick, "x faster, at least", ratio, limit, ratio >= limit);
}

void Budgets::atMost(double limit, const char *name, double workMs, double yardstickMs)
{
    const double ratio = workMs / yardstickMs;
    print(name, workMs, yardstickMs, "times, at most", ratio, limit, ratio <= limit);
}

void Budgets::countAtMost(double limit, const char *name, double count)
{
    const bool isKept = count <= limit;
    m_allKept = m_allKept && isKept;
    std::printf("%-64s %24s %10.2f counted, at most %8.2f  %s\n", name, "", count, limit, isKept ? "kept" : "MISSED");
}

double Budgets::milliseconds(const Work &work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
}

void Budgets::print(const char *name, double workMs, double yardstickMs, const char *rule, double ratio, double limit,
                    bool isKept)
{
    m_allKept = m_allKept && isKept;
    std::printf("%-64s %10.3f : %8.3f ms %10.2f %s %8.2f  %s\n", name, workMs, yardstickMs, ratio, rule, limit,
                isKept ? "kept" : "MISSED");
    std::fflush(stdout);
}

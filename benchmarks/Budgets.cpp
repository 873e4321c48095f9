// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

#include <malloc.h>

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

/// With three digits that count, or as a whole number.
QString number(double value)
{
    const int decimals = value == 0 || value >= 100 ? 0 : value >= 10 ? 1 : value >= 1 ? 2 : 3;
    return QString::number(value, 'f', decimals);
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
    print(name, times.work, times.yardstick, "at least ", ratio, limit, ratio >= limit);
}

void Budgets::atMost(double limit, const char *name, double workMs, double yardstickMs)
{
    const double ratio = workMs / yardstickMs;
    print(name, workMs, yardstickMs, "at most ", ratio, limit, ratio <= limit);
}

void Budgets::countAtMost(double limit, const char *name, double count)
{
    printRow(name, {}, {}, number(count), QStringLiteral("at most ") + number(limit), verdict(count <= limit));
}

void Budgets::measured(const char *name, double value, const char *unit)
{
    printRow(name, {}, {}, number(value) + u' ' + QLatin1String(unit), {}, {});
}

void Budgets::printHead()
{
    std::puts("| What | Work, ms | Yardstick, ms | Ratio or count | Budget | |\n|---|--:|--:|--:|---|---|");
}

double Budgets::milliseconds(const Work &work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
}

double Budgets::heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}

void Budgets::print(const char *name, double workMs, double yardstickMs, const char *rule, double ratio, double limit,
                    bool isKept)
{
    printRow(name, number(workMs), number(yardstickMs), number(ratio), QLatin1String(rule) + number(limit),
             verdict(isKept));
}

QString Budgets::verdict(bool isKept)
{
    m_allKept = m_allKept && isKept;
    return isKept ? QStringLiteral("kept") : QStringLiteral("MISSED");
}

void Budgets::printRow(const char *name, const QString &work, const QString &yardstick, const QString &value,
                       const QString &budget, const QString &verdict)
{
    std::printf("| %-66s | %9s | %9s | %10s | %-16s | %s |\n", name, qPrintable(work), qPrintable(yardstick),
                qPrintable(value), qPrintable(budget), qPrintable(verdict));
    std::fflush(stdout);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
#include <QString>

#include <functional>

class ModelContainer;
class World;

/// Prints one row of a table for each budget and remembers whether one was missed. Times say nothing from one machine
/// to the next, so a budget is a ratio of two pieces of work measured in the same run, or a count.
class Budgets
{
public:
    using Work = std::function<void()>;

    /// `work` takes at most `limit` times as long as `yardstick`. The shortest of `runs` each are compared.
    void atMost(double limit, const char *name, const Work &work, const Work &yardstick, int runs = 9);
    /// `work` is at least `limit` times as fast as `yardstick`.
    void timesFaster(double limit, const char *name, const Work &work, const Work &yardstick, int runs = 9);
    /// For work that cannot be repeated as it stands: both durations in milliseconds, measured by the caller.
    void atMost(double limit, const char *name, double workMs, double yardstickMs);
    /// `count`, such as bytes for each event, is at most `limit`.
    void countAtMost(double limit, const char *name, double count);
    /// A figure that has no limit.
    void measured(const char *name, double value, const char *unit);

    /// Begins the table.
    static void printHead();

    /// Milliseconds of processor time that one call takes, all threads together: on a busy machine the wall clock also
    /// counts the others.
    static double milliseconds(const Work &work);
    /// What is in use of the heap.
    static double heapBytes();

    /// Whether every line so far kept within its limit.
    bool allKept() const { return m_allKept; }

private:
    void print(const char *name, double workMs, double yardstickMs, const char *rule, double ratio, double limit,
               bool isKept);
    QString verdict(bool isKept);
    static void printRow(const char *name, const QString &work, const QString &yardstick, const QString &value,
                         const QString &budget, const QString &verdict);

    bool m_allKept = true;
};

// The areas.
void alertsBudgets(Budgets &budgets);
void listBudgets(Budgets &budgets);
void mapBudgets(Budgets &budgets);
void networkBudgets(Budgets &budgets);
void parserBudgets(Budgets &budgets);
void screenBudgets(Budgets &budgets);
void statsBudgets(Budgets &budgets);
void storeBudgets(Budgets &budgets);

/// The history over a store of a million events, `container` on the file at `path`; a part of the store's area.
void historyBudgets(Budgets &budgets, World &world, const QString &path, ModelContainer &container);

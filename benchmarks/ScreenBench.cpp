// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"
#include "FilledStore.h"
#include "LoopGaps.h"

#include "PageGenerator.h"
#include "Stage.h"
#include "orvaliaApp.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <cstdlib>

using namespace std::chrono_literals;

namespace {
constexpr QSize windowSize(1100, 720);
constexpr int few = 10'000;
constexpr int many = 100'000;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// Fills the store that the program will open, and sets its clock behind the newest event.
void fill(World &world, int count, std::chrono::milliseconds pace)
{
    const FilledStore store(Platform::current().storePath, count, pace);
    world.clock.setNow(storedEvent(count, pace).date);
}

bool showsRow(const QQuickItem &item)
{
    const QList<QQuickItem *> children = item.childItems();
    return item.objectName() == QLatin1String("row 0")
        || std::any_of(children.begin(), children.end(), [](const QQuickItem *child) { return showsRow(*child); });
}

/// Starts the program and waits for its first frame.
double millisecondsToFirstFrame(int count, std::chrono::milliseconds pace)
{
    World world;
    fill(world, count, pace);
    std::unique_ptr<orvaliaApp> app;
    QQuickWindow *window = nullptr;
    const double passed = Budgets::milliseconds([&] {
        app = std::make_unique<orvaliaApp>();
        for (QWindow *const candidate : QGuiApplication::topLevelWindows())
            if (candidate->isVisible())
                window = qobject_cast<QQuickWindow *>(candidate);
        QEventLoop loop;
        QObject::connect(window, &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit);
        loop.exec();
    });
    require(showsRow(*window->contentItem()) == (count > 0));
    app.reset();
    world.settle();
    return passed;
}

double bestToFirstFrame(int count, std::chrono::milliseconds pace)
{
    double best = millisecondsToFirstFrame(count, pace);
    for (int run = 1; run < 5; ++run)
        best = std::min(best, millisecondsToFirstFrame(count, pace));
    return best;
}

void firstFrame(Budgets &budgets)
{
    // The first start of all reads fonts, styles and shaders.
    millisecondsToFirstFrame(0, Pace::years);
    const double empty = bestToFirstFrame(0, Pace::years);
    budgets.atMost(1.5, "start: first frame, 100,000 stored : empty store", bestToFirstFrame(many, Pace::years), empty);
    budgets.measured("start: the same, all 100,000 within the list's thirty days", bestToFirstFrame(many, Pace::month),
                     "ms");
    budgets.measured("start: 10,000 stored", bestToFirstFrame(few, Pace::years), "ms");
    budgets.measured("start: 1,000,000 stored", millisecondsToFirstFrame(1'000'000, Pace::years), "ms");
}

/// Of the whole program, in bytes.
struct Heap
{
    double list;
    double map;
};

Heap heapOf(int count)
{
    Stage stage(windowSize);
    fill(stage.world, count, Pace::month);
    const double before = Budgets::heapBytes();
    stage.open();
    stage.picture();
    const double list = Budgets::heapBytes();
    stage.key(Qt::Key_3, Qt::ControlModifier);
    stage.waitFor(QStringLiteral("map"));
    stage.picture();
    return {list - before, Budgets::heapBytes() - before};
}

/// The slope between two stores that both fill the window: what a row on the screen takes is no event's.
void memory(Budgets &budgets)
{
    heapOf(many);
    const Heap empty = heapOf(0);
    const Heap some = heapOf(few);
    const Heap full = heapOf(many);
    const double list = (full.list - some.list) / (many - few);
    const double map = (full.map - some.map) / (many - few);
    budgets.countAtMost(200, "memory: heap bytes of an event, 100,000 in the list", list);
    budgets.countAtMost(300, "memory: more of them with the map in its place", map - list);
    const Heap most = heapOf(1'000'000);
    struct Line
    {
        const char *name;
        double bytes;
    };
    for (const Line &line : {Line{"memory: heap with the list, nothing stored", empty.list},
                             Line{"memory: heap with the list, 10,000 stored", some.list},
                             Line{"memory: heap with the list, 100,000 stored", full.list},
                             Line{"memory: heap with the list, 1,000,000 stored", most.list},
                             Line{"memory: heap with the map, nothing stored", empty.map},
                             Line{"memory: heap with the map, 100,000 stored", full.map}})
        budgets.measured(line.name, line.bytes / (1 << 20), "MiB");
}

QByteArray page(int rows, Instant now)
{
    return PageGenerator::page(PageGenerator(1).swarm(rows, now, 240h));
}

/// The longest gap of the loop while a page of events is taken in by an empty store, with all alerts on.
double gapOfRefresh(const QByteArray &body, Instant now)
{
    Stage stage(windowSize);
    stage.world.clock.setNow(now);
    for (const char *const key : {"settings.hasAskedNotifPermission", "notificationsEnabled", "settings.swarmEnabled"})
        stage.world.userDefaults.values.insert(QLatin1String(key), true);
    stage.world.urlSession.holdsAnswers = true;
    stage.world.urlSession.enqueue(body);
    stage.open();
    LoopGaps::takeLongest();
    stage.world.urlSession.release();
    stage.waitFor(QStringLiteral("row 0"));
    stage.picture();
    return LoopGaps::takeLongest();
}

void gaps(Budgets &budgets)
{
    const Instant now = storedEvent(many, Pace::month).date;
    budgets.measured("loop: longest gap, first refresh of 1,700 rows", gapOfRefresh(page(1700, now), now), "ms");
    constexpr qsizetype largestPage = 16 << 20;
    const int rows = int(largestPage / (page(1000, now).size() / 1000 + 1));
    budgets.measured("loop: longest gap, refresh of a page of 16 MiB", gapOfRefresh(page(rows, now), now), "ms");

    Stage stage(windowSize);
    fill(stage.world, many, Pace::month);
    stage.open();
    stage.picture();
    stage.press(QStringLiteral("Buscar por localización"));
    LoopGaps::takeLongest();
    for (const char *const letters : {"pu", "eblo", " 77"}) {
        stage.type(QLatin1String(letters));
        stage.pass(300ms);
        stage.picture();
    }
    budgets.measured("loop: longest gap, search typed over 100,000 events", LoopGaps::takeLongest(), "ms");
    stage.key(Qt::Key_Escape);
    stage.key(Qt::Key_Escape);
    stage.picture();
    struct Section
    {
        Qt::Key key;
        const char *shows;
        const char *text;
    };
    for (const Section &section :
         {Section{Qt::Key_2, "history", "loop: longest gap, to the history with 100,000 events"},
          Section{Qt::Key_3, "map", "loop: longest gap, to the map with 100,000 events"},
          Section{Qt::Key_4, "Actividad Reciente", "loop: longest gap, to the statistics with 100,000 events"},
          Section{Qt::Key_1, "row 0", "loop: longest gap, to the recent list with 100,000 events"}}) {
        LoopGaps::takeLongest();
        stage.key(section.key, Qt::ControlModifier);
        stage.waitFor(QLatin1String(section.shows));
        stage.picture();
        budgets.measured(section.text, LoopGaps::takeLongest(), "ms");
    }
}

/// How often the loop wakes while it runs for this long.
int turns(std::chrono::seconds length)
{
    int turns = 0;
    QEventLoop loop;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &loop, [&] { ++turns; });
    QTimer::singleShot(length, &loop, &QEventLoop::quit);
    loop.exec();
    return turns;
}

/// How often the loop of a window at rest wakes, in a minute. The program's own clock stands still meanwhile. What
/// beginning and ending to count takes is in both figures.
double wakeUps()
{
    return std::max(0, turns(8s) - turns(2s)) * 10;
}

void rest(Budgets &budgets)
{
    Stage stage(windowSize);
    fill(stage.world, 1000, Pace::month);
    stage.open();
    for (const auto &[key, text] : {std::pair(Qt::Key_1, "rest: wake-ups in a minute, recent list"),
                                    std::pair(Qt::Key_2, "rest: wake-ups in a minute, history"),
                                    std::pair(Qt::Key_4, "rest: wake-ups in a minute, statistics"),
                                    std::pair(Qt::Key_3, "rest: wake-ups in a minute, map, whose rings move")}) {
        stage.key(key, Qt::ControlModifier);
        stage.picture();
        wakeUps();
        budgets.measured(text, wakeUps(), "");
    }
    stage.world.appearance.setReducedMotion(true);
    stage.picture();
    budgets.measured("rest: wake-ups in a minute, map, with reduced motion", wakeUps(), "");
}
}

void screenBudgets(Budgets &budgets)
{
    firstFrame(budgets);
    memory(budgets);
    gaps(budgets);
    rest(budgets);
}

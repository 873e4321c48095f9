// SPDX-License-Identifier: GPL-3.0-or-later
#include "Budgets.h"

#include "Core/DataSources/EarthquakeDataSource.h"
#include "Core/Location/LocationManager.h"
#include "Core/Notifications/NotificationFilter.h"
#include "Core/Notifications/NotificationSettings.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Core/Repositories/EarthquakeRepository.h"
#include "PageGenerator.h"
#include "Platform/UserNotifications/DesktopNotificationCenter.h"
#include "Support/PrivateBus.h"
#include "Support/World.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <limits>

#include <time.h>

namespace {
constexpr int rowsOfAPage = 1700;
constexpr Coordinate laPalma{28.57, -17.84};

void require(bool holds)
{
    if (!holds)
        std::abort();
}

std::vector<Earthquake> earthquakes(const QList<ParsedEarthquake> &rows)
{
    std::vector<Earthquake> result;
    for (const ParsedEarthquake &row : rows)
        result.emplace_back(row.eventID, row.date, row.latitude, row.longitude, row.depth, row.magnitude,
                            row.magnitudeType, row.maxIntensity, row.location);
    return result;
}

void store(ModelContainer &container, const QList<ParsedEarthquake> &rows)
{
    for (const Earthquake &earthquake : earthquakes(rows))
        container.mainContext().insert(earthquake);
    container.mainContext().save();
}

void allOn(MagnitudeCategory threshold)
{
    NotificationSettings &settings = NotificationSettings::shared();
    settings.setIsEnabled(true);
    settings.setGlobalMagnitudeCategory(threshold);
    settings.setLocationNotificationsEnabled(true);
    settings.setSwarmNotificationsEnabled(true);
}

/// The day of a swarm, all of it new, near the user and too weak for an alert by magnitude: every distance is measured.
class Evaluation
{
public:
    Evaluation(World &world, int count)
        : m_world(world)
        , m_events(earthquakes(PageGenerator(3).swarm(count, world.clock.now(), std::chrono::hours(24))))
    {
    }

    void operator()() const
    {
        // Swarm rules that have fired would count nothing.
        m_world.userDefaults.values = m_settings;
        require(m_filter.evaluate(m_events, m_events).size() > m_events.size());
    }

private:
    World &m_world;
    std::vector<Earthquake> m_events;
    QMap<QString, QVariant> m_settings = m_world.userDefaults.values;
    NotificationFilter m_filter{NotificationSettings::shared(), laPalma};
};

void evaluating(Budgets &budgets)
{
    constexpr int runs = 9;
    World world;
    allOn(MagnitudeCategory::major);
    const Evaluation page(world, rowsOfAPage);
    const Evaluation tenPages(world, 10 * rowsOfAPage);
    PageGenerator generator(4);
    std::vector<QList<ParsedEarthquake>> pages;
    pages.reserve(runs);
    for (int run = 0; run < runs; ++run)
        pages.push_back(generator.swarm(rowsOfAPage, world.clock.now(), std::chrono::hours(24)));
    ModelContainer container({.path = world.folder.filePath(QStringLiteral("alerts.sqlite"))});
    budgets.atMost(
        0.5, "alert rules over 1,700 new and recent events / storing them", page,
        [&, next = size_t(0)]() mutable { store(container, pages[next++]); }, runs);
    budgets.atMost(12, "alert rules over 17,000 new and recent events / over 1,700", tenPages, page, runs);
}

/// A notification server that shows everything, in a thread of its own.
class Server : public QDBusVirtualObject
{
public:
    explicit Server(PrivateBus &bus)
    {
        moveToThread(&m_thread);
        m_thread.start();
        QDBusConnection desktop = bus.connection(QStringLiteral("desktop"));
        desktop.registerVirtualObject(QStringLiteral("/org/freedesktop/Notifications"), this);
        require(desktop.registerService(QStringLiteral("org.freedesktop.Notifications")));
    }

    ~Server() override
    {
        m_thread.quit();
        m_thread.wait();
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() == QLatin1String("GetCapabilities"))
            return connection.send(message.createReply(QStringList{QStringLiteral("body-markup")}));
        return connection.send(message.createReply(uint(++shown)));
    }

    std::atomic<int> shown = 0;

private:
    QThread m_thread;
};

/// Processor time that `work` takes in this thread, which is the window's.
double ownMilliseconds(const Budgets::Work &work)
{
    const auto now = [] {
        timespec time;
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
    };
    const double start = now();
    work();
    return now() - start;
}

/// Of a program that meets its first page, every row an alert.
double longestTurnOfTheLoop()
{
    World world;
    allOn(MagnitudeCategory::micro);
    LocationManager::shared();
    world.settle();
    Q_EMIT world.locationService->locationsUpdated({laPalma});
    world.settle();
    world.userNotificationCenter.status = NotificationAuthorizationStatus::authorized;
    PrivateBus bus;
    Server server(bus);
    world.permissions.answers.insert(Permissions::Subject::notifications, Permissions::Answer::authorized);
    DesktopNotificationCenter center(world.permissions, bus.connection(QStringLiteral("program")),
                                     QStringLiteral("orvalia"));
    ModelContainer container({.path = world.folder.filePath(QStringLiteral("first.sqlite"))});
    const EarthquakeQuery query(container);
    EarthquakeRepository repository(container.mainContext());
    const QList<ParsedEarthquake> rows =
        PageGenerator(5).swarm(rowsOfAPage, world.clock.now(), std::chrono::hours(240));
    world.urlSession.enqueue(PageGenerator::page(rows));
    const auto refresh = [&] {
        repository.refresh();
        for (const UserNotificationRequest &request : world.userNotificationCenter.sent)
            center.add(request);
    };
    QMetaObject::invokeMethod(&repository, refresh, Qt::QueuedConnection);
    double longest = 0;
    while (server.shown < rowsOfAPage)
        longest =
            std::max(longest, ownMilliseconds([] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); }));
    require(!repository.lastError() && query.count() == rowsOfAPage);
    return longest;
}

void firstRefresh(Budgets &budgets)
{
    double turnMs = std::numeric_limits<double>::infinity();
    double storeMs = turnMs;
    for (int run = 0; run < 5; ++run) {
        turnMs = std::min(turnMs, longestTurnOfTheLoop());
        const World world;
        const auto rows = PageGenerator(5).swarm(rowsOfAPage, world.clock.now(), std::chrono::hours(240));
        ModelContainer container({.path = world.folder.filePath(QStringLiteral("yardstick.sqlite"))});
        storeMs = std::min(storeMs, ownMilliseconds([&] { store(container, rows); }));
    }
    budgets.atMost(8, "longest turn of the loop, first refresh of 1,700 alerts / storing", turnMs, storeMs);
}
}

void alertsBudgets(Budgets &budgets)
{
    int argc = 1;
    char name[] = "orvalia_bench";
    char *argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    evaluating(budgets);
    firstRefresh(budgets);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/StatsViewModel.h"
#include "Support/Table.h"
#include "Support/World.h"

#include <QTest>

#include <optional>

namespace {
/// What one test event differs in; the rest is of no matter to the figures.
struct Event
{
    double secondsAgo = 0;
    double magnitude = 1.0;
    double depth = 10.0;
    double latitude = 28.0;
    double longitude = -16.5;
    const char *location = "NW LANZAROTE";
};

std::vector<Earthquake> made(const World &world, const std::vector<Event> &events)
{
    std::vector<Earthquake> earthquakes;
    earthquakes.reserve(events.size());
    for (const Event &event : events)
        earthquakes.emplace_back(QStringLiteral("es2025%1").arg(earthquakes.size()),
                                 moved(world.clock.now(), -event.secondsAgo), event.latitude, event.longitude,
                                 event.depth, event.magnitude, QStringLiteral("mbLg"), std::nullopt,
                                 QString::fromUtf8(event.location));
    return earthquakes;
}
}

class StatsViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_model.emplace(); }

    void activityCountsReachBackToTheCutOffItself_data()
    {
        const Table<double, QString> row;
        row("from the future", -3600.0, "1 1 1 1");
        row("an hour", 3600.0, "1 1 1 1");
        row("over an hour", 3600.001, "0 1 1 1");
        row("a day", 86400.0, "0 1 1 1");
        row("over a day", 86400.001, "0 0 1 1");
        row("a week", 604800.0, "0 0 1 1");
        row("over a week", 604800.001, "0 0 0 1");
        row("thirty days", 2592000.0, "0 0 0 1");
        row("over thirty days", 2592000.001, "0 0 0 0");
    }

    void activityCountsReachBackToTheCutOffItself()
    {
        const auto [secondsAgo, expected] = Table<double, QString>::current();
        m_model->update(made(m_world, {{.secondsAgo = secondsAgo}}));
        QCOMPARE(QStringLiteral("%1 %2 %3 %4")
                     .arg(m_model->countLastHour())
                     .arg(m_model->countLast24h())
                     .arg(m_model->countLast7d())
                     .arg(m_model->countLast30d()),
                 expected);
        QCOMPARE(m_model->peakLast24h().has_value(), m_model->countLast24h() == 1);
        QCOMPARE(m_model->peakLast7d().has_value(), m_model->countLast7d() == 1);
        // What is older than any window still tells of zones, sizes and depths.
        QCOMPARE(m_model->magnitudeStats().size(), 5U);
        QCOMPARE(m_model->topClusters().size(), 1U);
        QCOMPARE(m_model->depthStat()->total, 1);
    }

    void peakOfEqualsIsTheNewest()
    {
        const auto events = made(m_world,
                                 {{.secondsAgo = 10, .magnitude = 2.0},
                                  {.secondsAgo = 20, .magnitude = 3.1},
                                  {.secondsAgo = 30, .magnitude = 3.1},
                                  {.secondsAgo = 90000, .magnitude = 3.2},
                                  {.secondsAgo = 700000, .magnitude = 5.0}});
        m_model->update(events);
        QVERIFY(m_model->peakLast24h()->earthquake == events[1]);
        QVERIFY(m_model->peakLast7d()->earthquake == events[3]);
    }

    void barsAreMeasuredByTheFullestCategory()
    {
        std::vector<Event> events(10, {.magnitude = 1.9});
        events.insert(events.end(), 5, {.magnitude = 2.0});
        m_model->update(made(m_world, events));
        const std::vector<MagnitudeStat> expected{{MagnitudeCategory::micro, 10, 1.0},
                                                  {MagnitudeCategory::low, 5, 0.5},
                                                  {MagnitudeCategory::moderate, 0, 0.0},
                                                  {MagnitudeCategory::strong, 0, 0.0},
                                                  {MagnitudeCategory::major, 0, 0.0}};
        QVERIFY(m_model->magnitudeStats() == expected);
    }

    void coordinatesSnapToHalfDegrees_data()
    {
        const Table<double, double, QString> row;
        row("halves leave zero", 28.25, -16.25, "28.5,-16.5");
        row("above a half", 28.26, -16.26, "28.5,-16.5");
        row("other sides", -27.75, 16.25, "-28.0,16.5");
    }

    void coordinatesSnapToHalfDegrees()
    {
        const auto [latitude, longitude, expected] = Table<double, double, QString>::current();
        m_model->update(made(m_world, {{.latitude = latitude, .longitude = longitude}}));
        QCOMPARE(m_model->topClusters().front().id, expected);
    }

    void zonesStandByCountThenId()
    {
        std::vector<Event> events;
        for (const double latitude : {30.0, 29.0, 28.5, 28.0, 27.5, 27.0, 29.0})
            events.push_back({.latitude = latitude});
        m_model->update(made(m_world, events));
        QStringList ids;
        for (const ClusterStat &zone : m_model->topClusters())
            ids << QStringLiteral("%1 %2").arg(zone.id).arg(zone.count);
        const QStringList expected{QStringLiteral("29.0,-16.5 2"), QStringLiteral("27.0,-16.5 1"),
                                   QStringLiteral("27.5,-16.5 1"), QStringLiteral("28.0,-16.5 1"),
                                   QStringLiteral("28.5,-16.5 1")};
        QCOMPARE(ids, expected);
    }

    void zoneTellsItsMeanAndItsCommonestName_data()
    {
        const Table<QStringList, QString> row;
        row("most frequent", QStringLiteral("A|B|B").split(u'|'), "B");
        row("tie", QStringLiteral("B|A|B|A").split(u'|'), "A");
        row("as written", QStringLiteral(" a | a |A").split(u'|'), " a ");
        row("without a name", QStringLiteral("||A").split(u'|'), "");
    }

    void zoneTellsItsMeanAndItsCommonestName()
    {
        const auto [names, expected] = Table<QStringList, QString>::current();
        std::vector<Earthquake> events;
        for (const QString &name : names)
            events.emplace_back(QString::number(events.size()), m_world.clock.now(), 27.9, -16.6, 5.0,
                                double(events.size()), QStringLiteral("Mw"), std::nullopt, name);
        m_model->update(events);
        const ClusterStat zone = m_model->topClusters().front();
        QCOMPARE(zone.displayName, expected);
        QCOMPARE(zone.count, names.size());
        QCOMPARE(zone.averageMagnitude, double(names.size() - 1) / 2);
        QCOMPARE(zone.latKey, 28.0);
        QCOMPARE(zone.lonKey, -16.5);
    }

    void depthBandsIncludeBothBoundsInTheMiddle()
    {
        std::vector<Event> events;
        for (const double depth : {-1.0, 0.0, 29.999, 30.0, 70.0, 70.001})
            events.push_back({.depth = depth});
        m_model->update(made(m_world, events));
        const DepthStat depth = *m_model->depthStat();
        QCOMPARE(depth.shallowCount, 3);
        QCOMPARE(depth.intermediateCount, 2);
        QCOMPARE(depth.deepCount, 1);
        QCOMPARE(depth.averageDepth, (-1.0 + 0.0 + 29.999 + 30.0 + 70.0 + 70.001) / 6);
        QCOMPARE(depth.shallowFraction(), 0.5);
        QCOMPARE(depth.deepFraction(), 1.0 / 6);
        QCOMPARE(DepthStat().intermediateFraction(), 0.0);
    }

    void emptyListClearsEveryFigure()
    {
        m_model->update(made(m_world, {{}}));
        m_model->update({});
        QCOMPARE(m_model->countLastHour() + m_model->countLast24h() + m_model->countLast7d() + m_model->countLast30d(),
                 0);
        QVERIFY(!m_model->peakLast24h() && !m_model->peakLast7d() && !m_model->depthStat());
        QVERIFY(m_model->magnitudeStats().empty() && m_model->topClusters().empty());
    }

private:
    World m_world;
    std::optional<StatsViewModel> m_model;
};

QTEST_GUILESS_MAIN(StatsViewModelTest)
#include "StatsViewModelTest.moc"

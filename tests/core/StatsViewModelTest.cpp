// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/ViewModels/StatsViewModel.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// What one test event differs in; the rest is of no matter to the figures.
struct Event
{
    double secondsAgo = 0;
    double magnitude = 1.0;
    double depth = 10.0;
    double latitude = 28.0;
    double longitude = -16.5;
};

std::vector<Earthquake> made(const World &world, const std::vector<Event> &events)
{
    std::vector<Earthquake> earthquakes;
    earthquakes.reserve(events.size());
    for (const Event &event : events)
        earthquakes.emplace_back(QString::number(earthquakes.size()), moved(world.clock.now(), -event.secondsAgo),
                                 event.latitude, event.longitude, event.depth, event.magnitude, u"mbLg"_s, std::nullopt,
                                 u"NW LANZAROTE"_s);
    return earthquakes;
}
}

class StatsViewModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
        m_model.update(made(m_world, {{.secondsAgo = secondsAgo}}));
        QStringList counts;
        for (const qint64 count :
             {m_model.countLastHour(), m_model.countLast24h(), m_model.countLast7d(), m_model.countLast30d()})
            counts.append(QString::number(count));
        QCOMPARE(counts.join(u' '), expected);
        QCOMPARE(m_model.peakLast24h().has_value(), m_model.countLast24h() == 1);
        QCOMPARE(m_model.peakLast7d().has_value(), m_model.countLast7d() == 1);
    }

    void peakOfEqualsIsTheNewest()
    {
        const auto events = made(m_world,
                                 {{.secondsAgo = 10, .magnitude = 2.0},
                                  {.secondsAgo = 20, .magnitude = 3.1},
                                  {.secondsAgo = 30, .magnitude = 3.1},
                                  {.secondsAgo = 90000, .magnitude = 3.2},
                                  {.secondsAgo = 700000, .magnitude = 5.0}});
        m_model.update(events);
        QVERIFY(m_model.peakLast24h()->earthquake == events[1]);
        QVERIFY(m_model.peakLast7d()->earthquake == events[3]);
    }

    void zonesStandByCountThenId()
    {
        std::vector<Event> events;
        // Half a cell goes away from zero.
        for (const double latitude : {30.0, 29.0, 28.25, -27.75, 27.5, 29.0})
            events.push_back({.latitude = latitude, .longitude = -16.25});
        events.push_back({.latitude = 27.24, .longitude = 16.75});
        m_model.update(made(m_world, events));
        QStringList ids;
        for (const ClusterStat &zone : m_model.topClusters())
            ids << u"%1 %2"_s.arg(zone.id).arg(zone.count);
        QCOMPARE(ids.join(u'|'), u"29.0,-16.5 2|-28.0,-16.5 1|27.0,17.0 1|27.5,-16.5 1|28.5,-16.5 1"_s);
    }

    void zoneTellsItsMeanAndItsCommonestName_data()
    {
        const Table<QStringList, QString> row;
        row("most frequent", u"A|B|B"_s.split(u'|'), "B");
        row("tie", u"B|A|B|A"_s.split(u'|'), "A");
        row("as written", u" a | a |A"_s.split(u'|'), " a ");
        row("without a name", u"||A"_s.split(u'|'), "");
    }

    void zoneTellsItsMeanAndItsCommonestName()
    {
        const auto [names, expected] = Table<QStringList, QString>::current();
        std::vector<Earthquake> events;
        for (const QString &name : names)
            events.push_back(testEarthquake(QString::number(events.size()), 0, double(events.size()), name));
        m_model.update(events);
        const ClusterStat zone = m_model.topClusters().front();
        QCOMPARE(zone.displayName, expected);
        QCOMPARE(zone.count, names.size());
        QCOMPARE(zone.averageMagnitude, double(names.size() - 1) / 2);
        QCOMPARE(zone.latKey, 28.0);
        QCOMPARE(zone.lonKey, -18.5);
    }

    void depthBandsIncludeBothBoundsInTheMiddle()
    {
        std::vector<Event> events;
        for (const double depth : {-1.0, 0.0, 29.999, 30.0, 70.0, 70.001})
            events.push_back({.depth = depth});
        m_model.update(made(m_world, events));
        const DepthStat depth = *m_model.depthStat();
        QCOMPARE(depth.shallowCount, 3);
        QCOMPARE(depth.intermediateCount, 2);
        QCOMPARE(depth.deepCount, 1);
        QCOMPARE(depth.averageDepth, (-1.0 + 0.0 + 29.999 + 30.0 + 70.0 + 70.001) / 6);
    }

    void emptyListClearsEveryFigure()
    {
        m_model.update(made(m_world, {{}}));
        m_model.update({});
        QCOMPARE(m_model.countLastHour() + m_model.countLast24h() + m_model.countLast7d() + m_model.countLast30d(), 0);
        QVERIFY(!m_model.peakLast24h() && !m_model.peakLast7d() && !m_model.depthStat());
        QVERIFY(m_model.magnitudeStats().empty() && m_model.topClusters().empty());
    }

private:
    World m_world;
    StatsViewModel m_model;
};

QTEST_GUILESS_MAIN(StatsViewModelTest)
#include "StatsViewModelTest.moc"

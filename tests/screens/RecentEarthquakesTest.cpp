// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Ultimos/RecentEarthquakes.h"
#include "Core/Persistence/EarthquakeQuery.h"
#include "Core/Persistence/ModelContainer.h"
#include "Core/Persistence/ModelContext.h"
#include "Platform/Text/TextSearch.h"
#include "Support/Table.h"
#include "Support/TestEarthquake.h"
#include "Support/World.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 nowSecond = 1'800'000'000;
const Instant now{std::chrono::seconds(nowSecond)};
}

class RecentEarthquakesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sectionsByAge()
    {
        std::vector<Earthquake> events;
        for (const int secondsAgo : {-3600, 0, 86400, 86401, 604800, 604801, 2592000, 2592001})
            events.push_back(testEarthquake(QString::number(secondsAgo), nowSecond - secondsAgo));
        store(events);
        evaluate({});
        QCOMPARE(shown(), u"-3600 0 86400 86401 604800 604801 2592000"_s);
        QVERIFY(m_recent.sectionCounts() == (std::array<qsizetype, 3>{3, 2, 2}));
    }

    void filtersKeepTheOrder_data()
    {
        Table<int, qint64, QString, QString> row;
        const QString none;
        row("nothing", -1, -1, none, "a b c d e");
        row("micro", 0, -1, none, "b d");
        row("low", 1, -1, none, "a e");
        row("strong", 3, -1, none, "");
        row("last hour", -1, 3600, none, "a b");
        row("7 days leave out the older section", -1, 604800, none, "a b c d");
        row("part of a name", -1, -1, u"atlantico"_s, "a d");
        row("all together", 0, 604800, u"canarias"_s, "d");
    }

    void filtersKeepTheOrder()
    {
        const auto [category, secondsBack, text, expected] = Table<int, qint64, QString, QString>::current();
        store({testEarthquake(u"a"_s, nowSecond - 60, 2.0, u"ATLÁNTICO-CANARIAS"_s),
               testEarthquake(u"b"_s, nowSecond - 3600, 1.99, u"W EL HIERRO"_s),
               testEarthquake(u"c"_s, nowSecond - 90000, 4.0, u"W EL HIERRO"_s),
               testEarthquake(u"d"_s, nowSecond - 604800, 0.5, u"ATLÁNTICO-CANARIAS"_s),
               testEarthquake(u"e"_s, nowSecond - 604801, 3.99, u"PEÑÓN"_s)});
        RecentEarthquakes::Filter filter;
        if (category >= 0)
            filter.category = MagnitudeCategory(MagnitudeCategory::Band(category));
        if (secondsBack >= 0)
            filter.cutoff = now - std::chrono::seconds(secondsBack);
        filter.foldedLocation = foldedForSearch(text);
        evaluate(filter);
        QCOMPARE(shown(), expected);
    }

    void searchTakesInNamesThatCameLater()
    {
        store({testEarthquake(u"a"_s, nowSecond - 60, 2.0, u"W ADEJE"_s)});
        const RecentEarthquakes::Filter filter{.foldedLocation = foldedForSearch(u"adeje"_s)};
        evaluate(filter);
        store({testEarthquake(u"b"_s, nowSecond - 50, 2.0, u"E ADEJE"_s),
               testEarthquake(u"c"_s, nowSecond - 40, 2.0, u"N ARONA"_s)});
        evaluate(filter);
        QCOMPARE(shown(), u"b a"_s);
        evaluate({.foldedLocation = foldedForSearch(u"arona"_s)});
        QCOMPARE(shown(), u"c"_s);
    }

    void init()
    {
        m_container = std::make_unique<ModelContainer>(ModelContainer::Configuration{.isStoredInMemoryOnly = true});
        m_recent = {};
    }

private:
    void store(const std::vector<Earthquake> &events)
    {
        for (const Earthquake &event : events)
            m_container->mainContext().insert(event);
        m_container->mainContext().save();
    }
    void evaluate(const RecentEarthquakes::Filter &filter)
    {
        m_recent.evaluate(m_container->earthquakes(), filter, RecentEarthquakes::Cutoffs(now));
    }
    QString shown() const
    {
        QStringList ids;
        for (const quint32 place : m_recent.places())
            ids.append(m_container->earthquakes().at(place).eventID());
        return ids.join(u' ');
    }

    World m_world;
    std::unique_ptr<ModelContainer> m_container;
    RecentEarthquakes m_recent;
};

QTEST_GUILESS_MAIN(RecentEarthquakesTest)
#include "RecentEarthquakesTest.moc"

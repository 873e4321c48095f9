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

namespace {
constexpr qint64 nowSecond = 1'800'000'000;
const Instant now{std::chrono::seconds(nowSecond)};
}

class RecentEarthquakesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sectionsByAge_data()
    {
        Table<qint64, int> row;
        row("in the future", qint64(-3600), 0);
        row("now", qint64(0), 0);
        row("24 h exactly", qint64(86400), 0);
        row("24 h and a second", qint64(86401), 1);
        row("7 d exactly", qint64(604800), 1);
        row("7 d and a second", qint64(604801), 2);
        row("30 d exactly", qint64(2592000), 2);
        row("30 d and a second", qint64(2592001), -1);
    }

    void sectionsByAge()
    {
        const auto [secondsAgo, section] = Table<qint64, int>::current();
        store({testEarthquake(QStringLiteral("x"), nowSecond - secondsAgo)});
        evaluate({});
        for (int i = 0; i < 3; ++i)
            QCOMPARE(m_recent.sectionCounts()[size_t(i)], qsizetype(i == section ? 1 : 0));
        QCOMPARE(m_recent.isEmpty(), section < 0);
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
        row("accents do not matter", -1, -1, QStringLiteral("atlantico"), "a d");
        row("case does not matter", -1, -1, QStringLiteral("PEÑON"), "e");
        row("typed accents do not matter", -1, -1, QStringLiteral("híerro"), "b c");
        row("blanks at the ends do not matter", -1, -1, QStringLiteral(" \t hierro "), "b c");
        row("blanks alone", -1, -1, QStringLiteral(" \t "), "a b c d e");
        row("a line end is no blank", -1, -1, QStringLiteral("hierro\n"), "");
        row("blanks inside do", -1, -1, QStringLiteral("el  hierro"), "");
        row("all together", 0, 604800, QStringLiteral("canarias"), "d");
    }

    void filtersKeepTheOrder()
    {
        const auto [category, secondsBack, text, expected] = Table<int, qint64, QString, QString>::current();
        store({testEarthquake(QStringLiteral("a"), nowSecond - 60, 2.0, QStringLiteral("ATLÁNTICO-CANARIAS")),
               testEarthquake(QStringLiteral("b"), nowSecond - 3600, 1.99, QStringLiteral("W EL HIERRO")),
               testEarthquake(QStringLiteral("c"), nowSecond - 90000, 4.0, QStringLiteral("W EL HIERRO")),
               testEarthquake(QStringLiteral("d"), nowSecond - 604800, 0.5, QStringLiteral("ATLÁNTICO-CANARIAS")),
               testEarthquake(QStringLiteral("e"), nowSecond - 604801, 3.99, QStringLiteral("PEÑÓN"))});
        RecentEarthquakes::Filter filter;
        if (category >= 0)
            filter.category = MagnitudeCategory(MagnitudeCategory::Band(category));
        if (secondsBack >= 0)
            filter.cutoff = now - std::chrono::seconds(secondsBack);
        filter.foldedLocation = foldedForSearch(trimmedOfBlanks(text));
        evaluate(filter);
        QCOMPARE(shown(), expected);
    }

    void searchTakesInNamesThatCameLater()
    {
        store({testEarthquake(QStringLiteral("a"), nowSecond - 60, 2.0, QStringLiteral("W ADEJE"))});
        const RecentEarthquakes::Filter filter{.foldedLocation = foldedForSearch(QStringLiteral("adeje"))};
        evaluate(filter);
        store({testEarthquake(QStringLiteral("b"), nowSecond - 50, 2.0, QStringLiteral("E ADEJE")),
               testEarthquake(QStringLiteral("c"), nowSecond - 40, 2.0, QStringLiteral("N ARONA"))});
        evaluate(filter);
        QCOMPARE(shown(), QStringLiteral("b a"));
        evaluate({.foldedLocation = foldedForSearch(QStringLiteral("arona"))});
        QCOMPARE(shown(), QStringLiteral("c"));
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

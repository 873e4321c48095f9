// SPDX-License-Identifier: GPL-3.0-or-later
#include "Core/DataSources/IGNDataSource.h"
#include "Core/Models/Region.h"
#include "Core/Networking/HTMLParser.h"
#include "DemoCatalogue.h"
#include "DetouredURLSession.h"
#include "LoopbackInstitute.h"
#include "Platform/Clock/SystemClock.h"
#include "Platform/URLSession/NetworkURLSession.h"
#include "Support/FakeURLSession.h"
#include "Support/Table.h"

#include <QTest>

using namespace std::chrono_literals;

namespace {
constexpr Instant start{std::chrono::sys_days{std::chrono::year{2025} / 3 / 14} + 10h};
}

class MadeUpInstituteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pageHoldsTenDaysNewestFirst()
    {
        const DemoCatalogue catalogue(1, DemoCatalogue::Pace::quiet, start);
        const QList<ParsedEarthquake> events = HTMLParser::parseTable(catalogue.page());
        QCOMPARE(events.size(), 150);
        for (qsizetype i = 1; i < events.size(); ++i)
            QVERIFY(events[i - 1].date >= events[i].date);
        QVERIFY(events.constFirst().date <= start);
        QVERIFY(events.constLast().date >= start - std::chrono::days(10) - 1s);
        QVERIFY(DemoCatalogue(1, DemoCatalogue::Pace::quiet, start).page() == catalogue.page());
        QVERIFY(DemoCatalogue(2, DemoCatalogue::Pace::quiet, start).page() != catalogue.page());
    }

    void eventsComeWithTime_data()
    {
        const Table<DemoCatalogue::Pace, int, int> row;
        row("quiet: every 90 to 300 s", DemoCatalogue::Pace::quiet, 12, 40);
        row("swarm: every 2 to 15 s", DemoCatalogue::Pace::swarm, 240, 1800);
    }

    void eventsComeWithTime()
    {
        const auto [pace, least, most] = Table<DemoCatalogue::Pace, int, int>::current();
        DemoCatalogue catalogue(1, pace, start);
        QVERIFY(!catalogue.advance(start + 1s));
        QVERIFY(catalogue.advance(start + 1h));
        QVERIFY(!catalogue.advance(start + 1h));
        const auto isNew = [](const ParsedEarthquake &event) { return event.date > start; };
        const auto count = std::count_if(catalogue.events().begin(), catalogue.events().end(), isNew);
        QVERIFY(count >= least && count <= most);
    }

    void oldEventsLeaveThePage()
    {
        DemoCatalogue catalogue(1, DemoCatalogue::Pace::quiet, start);
        catalogue.advance(start + std::chrono::days(11));
        for (const ParsedEarthquake &event : catalogue.events())
            QVERIFY(event.date > start);
    }

    void eventsComeWholeOverTheRealRoad()
    {
        const DemoCatalogue catalogue(1, DemoCatalogue::Pace::quiet, start);
        const LoopbackInstitute institute([&] { return catalogue.page(); });
        SystemClock clock;
        NetworkURLSession network(clock);
        DetouredURLSession session(network, Region::canaryIslands().dataSourceURL, institute.url());
        auto events = IGNDataSource(session).fetchEarthquakes();
        QTRY_VERIFY(events.isFinished());
        QVERIFY(events.result() == catalogue.events());
    }

    void onlyTheOneAddressTakesTheDetour()
    {
        const QUrl from(QStringLiteral("https://example.org/page"));
        const QUrl to(QStringLiteral("http://127.0.0.1:1/"));
        FakeURLSession session;
        session.enqueue("page");
        DetouredURLSession detoured(session, from, to);
        QCOMPARE(detoured.data(from).result().body, QByteArray("page"));
        QVERIFY_EXCEPTION_THROWN(detoured.data(QUrl(QStringLiteral("https://example.org/"))).result(), URLSessionError);
        QVERIFY(session.requests == std::vector{to});
    }
};

QTEST_GUILESS_MAIN(MadeUpInstituteTest)
#include "MadeUpInstituteTest.moc"

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

#include <algorithm>

using namespace Qt::StringLiterals;
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
        QVERIFY(std::ranges::is_sorted(events, std::greater(), &ParsedEarthquake::date));
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
        catalogue.advance(start + std::chrono::days(11));
        QVERIFY2(std::ranges::all_of(catalogue.events(), isNew), "old events leave the page");
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
        const QUrl from(u"https://example.org/page"_s);
        const QUrl to(u"http://127.0.0.1:1/"_s);
        FakeURLSession session;
        session.enqueue("page");
        DetouredURLSession detoured(session, from, to);
        QCOMPARE(detoured.data(from).result().body, QByteArray("page"));
        QVERIFY_EXCEPTION_THROWN(detoured.data(QUrl(u"https://example.org/"_s)).result(), URLSessionError);
        QVERIFY(session.requests == std::vector{to});
    }
};

QTEST_GUILESS_MAIN(MadeUpInstituteTest)
#include "MadeUpInstituteTest.moc"
